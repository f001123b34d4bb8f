package qx.test;

import android.text.SpannableString;
import android.text.style.BackgroundColorSpan;
import android.widget.TextView;
import com.zorvane.android.sdk.qxe.QxLibrary;
import com.zorvane.android.sdk.qxe.QxText;

/** Which lines are captured, where they stand, and what belongs to the whole text. */
public final class LayoutTest {
    private static final int TOP = 0x33;
    private static final int CENTER = 0x13;
    private static final int FILL = 0x73;
    private static final int BOTTOM = 0x53;

    private static TextView view(int gravity, int height, int maxLines) {
        TextView view = new TextView();
        view.setPadding(3, 7, 5, 11);
        view.setGravity(gravity);
        view.setMaxLines(maxLines);
        view.layout(0, 0, 300, height);
        return view;
    }

    private static int[] capture(QxText text, TextView view, int lineLimit, FakeLayout layout) throws Throwable {
        text.setView(view);
        text.setLineLimit(lineLimit);
        Check.equal(true, text.setLayout(layout), "capture");
        return Peek.lines(Texts.handle(text));
    }

    private static void gravityAndLimitsChooseTheLines() throws Throwable {
        // Gravity, view height, line limit, max lines, lines of the layout; first line, number of lines, its baseline.
        int[][] rows = {
            {TOP, 200, 0, 3, 5, 0, 3, 22},
            {3, 200, 0, 3, 5, 0, 3, 22},
            {BOTTOM, 200, 0, 3, 5, 2, 3, 144},
            {CENTER, 200, 0, 3, 5, 0, 3, 83},
            {FILL, 200, 0, 3, 5, 0, 3, 83},
            {CENTER, 201, 0, 3, 5, 0, 3, 83},
            {CENTER, 202, 0, 3, 5, 0, 3, 84},
            {CENTER, 60, 0, 3, 5, 0, 3, 22},
            {BOTTOM, 60, 0, 3, 5, 2, 3, 4},
            {TOP, 200, 2, 3, 5, 0, 2, 22},
            {TOP, 200, 4, 3, 5, 0, 4, 22},
            {BOTTOM, 200, 9, 3, 5, 0, 5, 104},
            {CENTER, 200, 1, 0, 5, 0, 1, 103},
            {BOTTOM, 200, 0, Integer.MAX_VALUE, 5, 0, 5, 104},
            {TOP, 200, 0, 0, 5, 0, 0, 0},
            {BOTTOM, 200, -4, -1, 5, 0, 0, 0},
            {CENTER, 200, 0, 3, 0, 0, 0, 0},
        };
        try (QxText text = new QxText()) {
            for (int[] row : rows) {
                FakeLayout layout = new FakeLayout("text");
                layout.lines = row[4];
                int[] wanted = new int[9 * row[6]];
                for (int i = 0; i < row[6]; ++i) {
                    int line = row[5] + i;
                    int x = (int) (3 + 2.5f * line);
                    int y = row[7] + 20 * i;
                    int[] record = {x, y, 10 * line, 10 * line + 8, 1, x, y - 12, (int) (x + 50.75f), y + 4};
                    System.arraycopy(record, 0, wanted, 9 * i, 9);
                }
                String what = "gravity " + row[0] + ", height " + row[1] + ", limits " + row[2] + " and " + row[3];
                Check.equal(wanted, capture(text, view(row[0], row[1], row[3]), row[2], layout), what);
            }
        }
    }

    private static void onlyLinesThatExistAreAskedFor() throws Throwable {
        try (QxText text = new QxText()) {
            FakeLayout layout = new FakeLayout("text");
            layout.asked = (method, line) -> Check.that(method.equals("getLineCount"), method + " without lines");
            capture(text, view(CENTER, 200, 0), 0, layout);
            layout.asked = (method, line) -> Check.that(line >= 0 && line < 5, method + " of line " + line);
            capture(text, view(BOTTOM, 200, 5), 0, layout);
            layout.asked = (method, line) -> Check.that(!method.equals("getLineBottom"), "getLineBottom at the top");
            capture(text, view(TOP, 200, 5), 0, layout);
        }
    }

    private static void textsKeepTheirJavaIndexes() throws Throwable {
        Object[][] rows = {
            {"Aé\uD83D\uDE00漢", new int[] {'A', 0xE9, 0x1F600, 0x6F22}},
            {"a\0b", new int[] {'a', 0xFFFD, 'b'}},
            {"x\uD83Dy", new int[] {'x', 0xD83D, 'y'}},
            {"\uDE00\uD83D", new int[] {0xDE00, 0xD83D}},
            {"", new int[0]},
        };
        try (QxText text = new QxText()) {
            for (Object[] row : rows) {
                text.setLayout(new FakeLayout((String) row[0]));
                Check.equal(row[1], Peek.text(Texts.handle(text)), "characters");
            }
            int handle = Texts.handle(text);
            text.setLayout(new FakeLayout("kept"));
            int[] kept = Peek.text(handle);
            text.setView(view(TOP, 200, 2));
            Check.equal(true, text.setLayout(new FakeLayout(null)), "a layout without text");
            Check.equal(kept, Peek.text(handle), "leaves the text");
            Check.equal(18, Peek.lines(handle).length, "and captures its lines");
            Check.equal(false, text.setLayout(null), "no layout");
            Check.equal(18, Peek.lines(handle).length, "leaves the lines");
        }
    }

    /** The colour behind the first line of a text of blanks. */
    private static int backgroundOf(QxText text, CharSequence content) throws Throwable {
        TextView view = Texts.view(Texts.font("Roboto-Regular.ttf"), content, 20, 200, 40);
        Check.equal(true, text.capture(view), "capture");
        int[] pixels = text.render();
        return pixels[20 * text.getBitmapSize()[0] + 3];
    }

    private static void lastSpanColoursTheBackground() throws Throwable {
        int priority = 7 << SpannableString.SPAN_PRIORITY_SHIFT;
        try (QxText text = new QxText()) {
            text.setFontFile(Texts.font("Roboto-Regular.ttf"));
            Check.equal(0, backgroundOf(text, "          "), "no spans");

            SpannableString blanks = new SpannableString("          ");
            blanks.setSpan(new BackgroundColorSpan(0xFF112233), 0, 10, 0);
            blanks.setSpan(new Object(), 0, 10, 0);
            blanks.setSpan(new BackgroundColorSpan(0xFF445566), 2, 3, 0);
            Check.equal(0xFF445566, backgroundOf(text, blanks), "the later span, though it covers one blank");
            blanks.setSpan(new BackgroundColorSpan(0xFF778899), 0, 10, priority);
            Check.equal(0xFF445566, backgroundOf(text, blanks), "a span of higher priority comes first");

            // Spans count UTF-16 units: the last of ten lies behind four of two units.
            SpannableString emoji = new SpannableString(" \uD83D\uDE00\uD83D\uDE00\uD83D\uDE00\uD83D\uDE00 ");
            emoji.setSpan(new BackgroundColorSpan(0xFFAABBCC), 9, 10, 0);
            Check.equal(0xFFAABBCC, backgroundOf(text, emoji), "a span behind emoji");
            Check.equal(0, backgroundOf(text, "          "), "spans go with their text");

            backgroundOf(text, blanks);
            text.setLayout(new FakeLayout(null));
            Check.equal(0, text.render()[20 * 200 + 10], "and with a layout without text");
        }
    }

    public static void main(String[] arguments) {
        QxLibrary.load(System.getProperty("qx.library"));
        Check.test("gravity and limits choose the lines", LayoutTest::gravityAndLimitsChooseTheLines);
        Check.test("only lines that exist are asked for", LayoutTest::onlyLinesThatExistAreAskedFor);
        Check.test("texts keep their Java indexes", LayoutTest::textsKeepTheirJavaIndexes);
        Check.test("the last span colours the background", LayoutTest::lastSpanColoursTheBackground);
        Check.finish();
    }
}
