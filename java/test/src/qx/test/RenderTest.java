package qx.test;

import android.graphics.Typeface;
import android.view.Gravity;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxMargins;
import com.zorvane.android.sdk.qxe.QxText;
import com.zorvane.android.sdk.qxe.util.QxError;

/** Pictures of real paragraphs, and of sizes that cannot be drawn. */
public final class RenderTest {
    private static final String PARAGRAPH = "The quick brown fox jumps over the lazy dog and rests in the shade.";

    private static String roboto;

    private static TextView paragraph(int width, int height) {
        return Texts.view(roboto, PARAGRAPH, 24, width, height);
    }

    /** Left, top, right and bottom of the pixels that are not empty; the far edges lie outside. */
    private static int[] inkBox(int[] pixels, int width) {
        int[] box = {Integer.MAX_VALUE, Integer.MAX_VALUE, 0, 0};
        for (int i = 0; i < pixels.length; ++i) {
            if (pixels[i] >>> 24 == 0) continue;
            box[0] = Math.min(box[0], i % width);
            box[1] = Math.min(box[1], i / width);
            box[2] = Math.max(box[2], i % width + 1);
            box[3] = Math.max(box[3], i / width + 1);
        }
        return box;
    }

    private static void paragraphsStandWhereTheyWereLaidOut() throws Throwable {
        TextView view = paragraph(240, 400);
        int lines = view.getLayout().getLineCount();
        Check.that(lines >= 3, "the text wraps into " + lines + " lines");
        int textHeight = view.getLayout().getHeight();
        Object[][] gravities = {{Gravity.TOP, 0}, {Gravity.CENTER_VERTICAL, (400 - textHeight) / 2},
            {Gravity.BOTTOM, 400 - textHeight}};
        try (QxText text = new QxText()) {
            text.setFontFile(roboto);
            for (Object[] row : gravities) {
                view.setGravity((Integer) row[0] | Gravity.LEFT);
                text.capture(view);
                int[] pixels = text.render();
                int[] box = inkBox(pixels, 240);
                int top = (Integer) row[1];
                Check.that(box[1] >= top && box[1] < top + 12, "gravity " + row[0] + ": ink begins at " + box[1]);
                Check.that(box[3] > top + textHeight - 12 && box[3] <= top + textHeight, "and ends at " + box[3]);
                Check.that(box[0] < 4 && box[2] > 180 && box[2] <= 240, "and spans " + box[0] + ".." + box[2]);
            }
        }
    }

    private static void picturesRepeatAndEffectsShow() throws Throwable {
        TextView view = paragraph(240, 120);
        view.setTextColor(0xFF2040C0);
        try (QxText text = new QxText(); QxText other = new QxText()) {
            text.setFontFile(roboto);
            other.setFontFile(roboto);
            text.capture(view);
            other.capture(view);
            int[] plain = text.render();
            Check.equal(plain, text.render(), "drawn twice");
            Check.equal(plain, other.render(), "drawn by another instance");
            boolean colored = false;
            for (int pixel : plain) colored |= pixel == 0xFF2040C0;
            Check.that(colored, "the text has its colour");

            text.addOuterShadow(135, 6, 4, 0xFF000000, 0.5f);
            text.addStroke(2, 0xFFFF0000, 1, QxText.STROKE_OUTSIDE);
            text.addLinearGradient(
                    90, 1, new int[] {0xFFFFFF00, 0xFF00FF00}, new float[] {1, 1}, new float[] {0, 1}, 1);
            text.addInnerShadow(135, 2, 2, 0xFF000000, 0.5f);
            text.addOuterGlow(5, 0xFFFFFFFF, 0.5f);
            int[] decorated = text.render();
            QxMargins margins = text.getMargins();
            Check.equal((240 + margins.left + margins.right) * (120 + margins.top + margins.bottom), decorated.length,
                    "pixels with effects");
            int width = 240 + margins.left + margins.right;
            int different = 0;
            for (int y = 0; y < 120; ++y)
                for (int x = 0; x < 240; ++x)
                    if (plain[y * 240 + x] != decorated[(y + margins.top) * width + x + margins.left]) ++different;
            Check.that(different > 2000, "effects change the picture: " + different);
            text.clearEffects();
            Check.equal(plain, text.render(), "and go away again");

            // An empty centred stroke paints nothing, and has the others composed in a layer.
            text.addStroke(0, 0, 0, QxText.STROKE_CENTER);
            Check.equal(plain, text.render(), "an empty stroke");
            text.addInnerShadow(135, 4, 4, 0xFF000000, 1);
            int[] layered = text.render();
            text.clearEffects();
            text.addInnerShadow(135, 4, 4, 0xFF000000, 1);
            Check.that(!java.util.Arrays.equals(layered, text.render()), "it chooses the layer");
        }
    }

    private static void styleSlantsTheLetters() throws Throwable {
        TextView view = paragraph(240, 120);
        try (QxText text = new QxText()) {
            text.setFontFile(roboto);
            text.capture(view);
            int[] upright = text.render();
            view.setTypeface(Typeface.create(Typeface.createFromFile(roboto), Typeface.ITALIC));
            text.capture(view);
            int[] slanted = text.render();
            int different = 0;
            for (int i = 0; i < upright.length; ++i) if (upright[i] != slanted[i]) ++different;
            Check.that(different > 1000, "slanted letters: " + different);
        }
    }

    private static void impossibleSizesAreRefused() throws Throwable {
        // Width, height, the error: no array is that long; the VM of this test has no room for that many.
        int[][] rows = {
            {100000, 100000, QxError.INVALID_ARGUMENT},
            {Integer.MAX_VALUE, Integer.MAX_VALUE, QxError.INVALID_ARGUMENT},
            {Integer.MAX_VALUE, 1, QxError.INVALID_ARGUMENT},
            {8000, 8000, QxError.SYSTEM},
        };
        TextView view = paragraph(240, 120);
        for (int[] row : rows) {
            try (QxText text = new QxText()) {
                text.setFontFile(roboto);
                text.capture(view);
                TextView huge = new TextView();
                huge.setText("x");
                huge.layout(0, 0, row[0], row[1]);
                text.setView(huge);
                text.addOuterShadow(0, 9, 9, 0, 1);
                Check.equal(null, text.render(), row[0] + " x " + row[1]);
                Check.equal(row[2], QxError.last(), row[0] + " x " + row[1]);
                text.setView(view);
                Check.that(text.render() != null, "the instance still draws");
            }
        }
    }

    public static void main(String[] arguments) throws Throwable {
        QxLibrary.load(System.getProperty("qx.library"));
        roboto = Texts.font("Roboto-Regular.ttf");
        Check.test("paragraphs stand where they were laid out", RenderTest::paragraphsStandWhereTheyWereLaidOut);
        Check.test("pictures repeat and effects show", RenderTest::picturesRepeatAndEffectsShow);
        Check.test("a style slants the letters", RenderTest::styleSlantsTheLetters);
        Check.test("impossible sizes are refused", RenderTest::impossibleSizesAreRefused);
        Check.finish();
    }
}
