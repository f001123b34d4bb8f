package qx.test;

import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxMargins;
import com.zorvane.android.sdk.qxe.QxText;

/** What the adders pass on, the ids they answer, and the sizes that follow. */
public final class EffectsTest {
    private static final int COLOR = 0xFF010203;
    private static final int[] COLORS = {0xFF112233, 0xFF445566};
    private static final float[] ALPHAS = {0.25f, 0.75f};
    private static final float[] POSITIONS = {0.5f, 1};

    private static void argumentsArriveInOrder() throws Throwable {
        Object[][] rows = {
            {"InnerShadow", new Object[] {10f, 20f, 30f, COLOR, 0.5f}},
            {"OuterShadow", new Object[] {10f, 20f, 30f, COLOR, 0.5f}},
            {"OuterGlow", new Object[] {7f, COLOR, 0.5f}},
            {"Stroke", new Object[] {7f, COLOR, 0.5f, 3, 2}},
            {"LinearGradient", new Object[] {30f, 0.5f, COLORS, ALPHAS, POSITIONS, 0.25f}},
        };
        for (Object[] row : rows) {
            try (QxText text = new QxText()) {
                String name = "QxText_Add" + row[0] + "TextEffect";
                Check.equal(0, Texts.call(text, name, (Object[]) row[1]), name + " id");
                Check.equal(Peek.wantedKey((String) row[0]), Peek.effectKey(Texts.handle(text)), name + " settings");
            }
        }
    }

    private static void gradientArraysMustAgree() throws Throwable {
        int[] oneColor = {1};
        float[] one = {1};
        Object[][] rows = {
            {null, ALPHAS, POSITIONS}, {COLORS, null, POSITIONS}, {COLORS, ALPHAS, null},
            {oneColor, ALPHAS, POSITIONS}, {COLORS, one, POSITIONS}, {COLORS, ALPHAS, one},
        };
        try (QxText text = Texts.bound()) {
            byte[] before = Peek.effectKey(Texts.handle(text));
            Log.forget();
            for (Object[] row : rows)
                Check.equal(-1, text.addLinearGradient(0, 1, (int[]) row[0], (float[]) row[1], (float[]) row[2], 1),
                        "arrays that do not agree");
            Check.equal(0, Log.take("E QxText_JNI").size(), "messages about them");
            Check.equal(before, Peek.effectKey(Texts.handle(text)), "effects after them");
            // No stops at all are an effect that paints nothing.
            Check.equal(0, text.addLinearGradient(0, 1, new int[0], new float[0], new float[0], 1), "empty arrays");
            text.setView(Texts.view(Texts.font("Roboto-Regular.ttf"), "x", 20, 30, 30));
            Check.equal(900, text.render().length, "a picture with them");
        }
    }

    private static void idsCountOn() throws Throwable {
        try (QxText text = new QxText()) {
            Check.equal(0, text.addOuterGlow(4, COLOR, 1), "first");
            Check.equal(1, text.addStroke(2, COLOR, 1, QxText.STROKE_OUTSIDE), "second");
            Check.equal(0, text.addOuterGlow(9, COLOR, 1), "the first again, with other settings");
            text.setLayout(new FakeLayout("x"));
            text.render();
            Check.equal(3, text.addInnerShadow(0, 1, 1, COLOR, 1), "drawing takes a number for the fill");
            text.clearEffects();
            Check.equal(0, text.addInnerShadow(0, 1, 1, COLOR, 1), "clearing starts again");
        }
    }

    private static void picturesAreAsLargeAsViewAndMargins() throws Throwable {
        try (QxText text = new QxText()) {
            Check.equal(new int[] {0, 0}, text.getBitmapSize(), "size before the first picture");
            Check.equal(0, text.render().length, "a picture without a view is empty");
            TextView view = Texts.view(Texts.font("Roboto-Regular.ttf"), "Ag", 20, 100, 40);
            text.setView(view);
            text.addOuterShadow(30, 10, 3, COLOR, 1);
            QxMargins margins = text.getMargins();
            Check.that(margins.left > 0 && margins.left != margins.right && margins.top != margins.bottom
                            && margins.bottom != margins.left, "four different " + margins);
            int width = 100 + margins.left + margins.right;
            int height = 40 + margins.top + margins.bottom;
            Check.equal(width * height, text.render().length, "pixels");
            Check.equal(new int[] {width, height}, text.getBitmapSize(), "size");
        }
    }

    public static void main(String[] arguments) {
        QxLibrary.load(System.getProperty("qx.library"));
        Check.test("arguments arrive in order", EffectsTest::argumentsArriveInOrder);
        Check.test("gradient arrays must agree", EffectsTest::gradientArraysMustAgree);
        Check.test("ids count on", EffectsTest::idsCountOn);
        Check.test("pictures are as large as view and margins", EffectsTest::picturesAreAsLargeAsViewAndMargins);
        Check.finish();
    }
}
