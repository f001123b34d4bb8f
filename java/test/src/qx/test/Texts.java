package qx.test;

import android.graphics.Paint;
import android.text.StaticLayout;
import android.text.TextPaint;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxText;
import java.lang.reflect.Field;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.util.Scanner;

/** Fonts, views, and the private parts of QxText. */
final class Texts {
    private Texts() {}

    static int handle(QxText text) throws ReflectiveOperationException {
        return handleField().getInt(text);
    }

    static void setHandle(QxText text, int handle) throws ReflectiveOperationException {
        handleField().setInt(text, handle);
    }

    private static Field handleField() throws ReflectiveOperationException {
        Field field = QxText.class.getDeclaredField("mHandle");
        field.setAccessible(true);
        return field;
    }

    /** An instance whose native text exists. */
    static QxText bound() {
        QxText text = new QxText();
        text.setLineLimit(0);
        return text;
    }

    /** Calls a native by its name. */
    static Object call(QxText text, String name, Object... arguments) throws Throwable {
        for (Method method : QxText.class.getDeclaredMethods()) {
            if (!method.getName().equals(name)) continue;
            method.setAccessible(true);
            try {
                return method.invoke(text, arguments);
            } catch (InvocationTargetException e) {
                throw e.getCause();
            }
        }
        throw new NoSuchMethodException(name);
    }

    /** Path of an installed font file. */
    static String font(String fileName) throws Exception {
        Process list = new ProcessBuilder("fc-list", "--format", "%{file}\\n").start();
        try (Scanner lines = new Scanner(list.getInputStream(), "UTF-8")) {
            while (lines.hasNextLine()) {
                String line = lines.nextLine();
                if (line.endsWith("/" + fileName)) return line;
            }
        }
        throw new IllegalStateException("font " + fileName + " is not installed");
    }

    static TextPaint paint(float size) {
        TextPaint paint = new TextPaint(Paint.ANTI_ALIAS_FLAG);
        paint.setTextSize(size);
        return paint;
    }

    static StaticLayout layout(CharSequence text, TextPaint paint, int width) {
        return StaticLayout.Builder.obtain(text, 0, text.length(), paint, width).build();
    }

    /** A placed view with one font and text. */
    static TextView view(String fontPath, CharSequence text, float size, int width, int height) {
        TextView view = new TextView();
        view.setTypeface(android.graphics.Typeface.createFromFile(fontPath));
        view.setText(text);
        view.setTextSize(size);
        view.layout(0, 0, width, height);
        return view;
    }
}
