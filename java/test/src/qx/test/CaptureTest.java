package qx.test;

import android.graphics.Paint;
import android.graphics.Typeface;
import android.os.LocaleList;
import android.view.Gravity;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;
import java.util.Locale;

/** What is copied from paints and views. */
public final class CaptureTest {
    private static void paintsAreCopied() throws Throwable {
        Paint paint = new Paint(Paint.SUBPIXEL_TEXT_FLAG | Paint.ANTI_ALIAS_FLAG);
        paint.setTextSize(31.5f);
        paint.setTextScaleX(1.25f);
        paint.setTextSkewX(-0.25f);
        paint.setLetterSpacing(0.125f);
        paint.setElegantTextHeight(true);
        paint.setFakeBoldText(true);
        paint.setFontFeatureSettings("smcp, \"liga\" 0");
        paint.setTextAlign(Paint.Align.RIGHT);
        try (QxText text = new QxText()) {
            Check.equal(true, text.setPaint(paint), "capture");
            int handle = Texts.handle(text);
            float[] wanted = {31.5f, 1.25f, -0.25f, 1, 0.125f, 2, 0x5A3, 2};
            Check.equal(wanted, Peek.paint(handle), "numbers");
            Check.equal("smcp, \"liga\" 0", Peek.features(handle), "features");

            // A fresh paint is captured whole: nothing of the one before stays.
            Check.equal(true, text.setPaint(new Paint()), "second capture");
            Check.equal(new float[] {12, 1, 0, 0, 0, 0, 0x502, 0}, Peek.paint(handle), "numbers of a fresh paint");
            Check.equal("", Peek.features(handle), "features of a fresh paint");
            Check.equal(false, text.setPaint(null), "no paint");
        }
    }

    private static void alignmentsGoByName() throws Throwable {
        try (QxText text = new QxText()) {
            for (Paint.Align align : Paint.Align.values()) {
                Paint paint = new Paint();
                paint.setTextAlign(align);
                text.setPaint(paint);
                Check.equal((float) align.ordinal(), Peek.paint(Texts.handle(text))[7], align.name());
            }
        }
    }

    private static void flagsHaveTheLastWord() throws Throwable {
        Paint liar = new Paint() {
            @Override
            public boolean isFakeBoldText() {
                return true;
            }
        };
        try (QxText text = new QxText()) {
            text.setPaint(liar);
            Check.equal(0f, Peek.paint(Texts.handle(text))[3], "embolden without the flag");
        }
    }

    private static int localeListOf(QxText text, Locale... locales) throws Throwable {
        Paint paint = new Paint();
        paint.setTextLocales(new LocaleList(locales));
        text.setPaint(paint);
        return Peek.localeList(Texts.handle(text));
    }

    private static void localesAreRegistered() throws Throwable {
        try (QxText text = new QxText()) {
            int german = localeListOf(text, Locale.GERMAN, Locale.JAPAN);
            int reversed = localeListOf(text, Locale.JAPAN, Locale.GERMAN);
            Check.that(german > 0 && reversed > 0 && german != reversed, "two lists: " + german + ", " + reversed);
            Check.equal(german, localeListOf(text, Locale.GERMAN, Locale.JAPAN), "the first list again");
            Check.equal(0, localeListOf(text), "an empty list");
        }
    }

    private static void viewsAreCopied() throws Throwable {
        TextView view = new TextView();
        view.setPadding(1, 2, 3, 4);
        view.setGravity(Gravity.BOTTOM | Gravity.END);
        view.setMaxLines(6);
        view.setTextColor(0x80FF0011);
        view.layout(10, 20, 110, 60);
        try (QxText text = new QxText()) {
            text.setLineLimit(9);
            Check.equal(true, text.setView(view), "capture");
            int handle = Texts.handle(text);
            Check.equal(new int[] {100, 40, 1, 2, 3, 4, 0x00800055, 9, 6}, Peek.view(handle), "geometry");
            Check.equal(new int[] {0x80FF0011, 0, 0}, Peek.style(handle), "colour and style");

            for (int style = 0; style < 4; ++style) {
                view.setTypeface(Typeface.create(null, style));
                text.setView(view);
                Check.equal(new int[] {0x80FF0011, style & 1, style >> 1}, Peek.style(handle), "style " + style);
            }
            view.setTypeface(null);
            text.setView(view);
            Check.equal(new int[] {0x80FF0011, 1, 1}, Peek.style(handle), "no typeface leaves the style");

            view.layout(10, 20, 5, 30);
            Check.equal(true, text.setView(view), "a negative size");
            Check.equal(100, Peek.view(handle)[0], "leaves the old one");
            Check.that(Log.take("QxView").contains("E QxView: SetSize() - size invalid"), "and is logged");
            Check.equal(false, text.setView(null), "no view");
        }
    }

    public static void main(String[] arguments) {
        QxLibrary.load(System.getProperty("qx.library"));
        Check.test("paints are copied", CaptureTest::paintsAreCopied);
        Check.test("alignments go by name", CaptureTest::alignmentsGoByName);
        Check.test("flags have the last word", CaptureTest::flagsHaveTheLastWord);
        Check.test("locales are registered", CaptureTest::localesAreRegistered);
        Check.test("views are copied", CaptureTest::viewsAreCopied);
        Check.finish();
    }
}
