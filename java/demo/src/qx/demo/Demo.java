package qx.demo;

import android.graphics.Typeface;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/**
 * Draws a text with effects into a PNG file through the Java interface, and compares two such files.
 *
 * <pre>
 * Demo TEXT --font FILE --size PIXELS --width PIXELS --color #rrggbb --effect "NAME KEY=VALUE ..." ... -o FILE.png
 * Demo --compare A.png B.png
 * </pre>
 */
public final class Demo {
    private String content = "";
    private String font;
    private float size = 64;
    private int width;
    private int color = 0xFF000000;
    private final List<Effect> effects = new ArrayList<>();
    private String output;

    private Demo(String[] arguments) {
        for (int i = 0; i < arguments.length; ++i) {
            switch (arguments[i]) {
                case "--font": font = arguments[++i]; break;
                case "--size": size = Float.parseFloat(arguments[++i]); break;
                case "--width": width = Integer.parseInt(arguments[++i]); break;
                case "--color": color = Effect.parseColor(arguments[++i]); break;
                case "--effect": effects.add(new Effect(arguments[++i])); break;
                case "-o": output = arguments[++i]; break;
                default: content = arguments[i];
            }
        }
        if (font == null || output == null || width < 1)
            throw new IllegalArgumentException("--font, --width and -o are needed");
    }

    private TextView view() {
        TextView view = new TextView();
        view.setTypeface(Typeface.createFromFile(font));
        view.setText(content);
        view.setTextSize(size);
        view.setTextColor(color);
        view.layout(0, 0, width, 0);
        view.layout(0, 0, width, view.getLayout().getHeight());
        return view;
    }

    private void draw() throws Exception {
        try (QxText text = new QxText()) {
            if (!text.setFontFile(font)) throw new IllegalArgumentException("'" + font + "' is not a usable font");
            if (!text.capture(view())) throw new IllegalStateException("the view cannot be captured");
            for (Effect effect : effects) effect.addTo(text);
            int[] pixels = text.render();
            if (pixels == null) throw new IllegalStateException("no picture");
            new Png(text.getBitmapSize()[0], text.getBitmapSize()[1], pixels).write(Path.of(output));
        }
    }

    /** What differs, or null. */
    private static String difference(Png a, Png b) {
        if (a.width != b.width || a.height != b.height)
            return a.width + " x " + a.height + " against " + b.width + " x " + b.height;
        int different = 0;
        int first = Arrays.mismatch(a.pixels, b.pixels);
        for (int i = 0; i < a.pixels.length; ++i) if (a.pixels[i] != b.pixels[i]) ++different;
        if (different == 0) return null;
        return String.format("%d of %d pixels; the first at %d, %d: %08x against %08x", different, a.pixels.length,
                first % a.width, first / a.width, a.pixels[first], b.pixels[first]);
    }

    public static void main(String[] arguments) throws Exception {
        if (arguments.length == 3 && arguments[0].equals("--compare")) {
            Png a = Png.read(Path.of(arguments[1]));
            String difference = difference(a, Png.read(Path.of(arguments[2])));
            System.out.println(difference == null ? "equal: " + a.width + " x " + a.height + " pixels"
                                                  : "different: " + difference);
            System.exit(difference == null ? 0 : 1);
        }
        QxLibrary.load(System.getProperty("qx.library"));
        new Demo(arguments).draw();
    }
}
