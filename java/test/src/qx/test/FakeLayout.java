package qx.test;

import android.text.Layout;

/** Lines of plain numbers: 20 high, 12 of them above the baseline, which lies 15 below the top. */
class FakeLayout extends Layout {
    int lines = 5;
    /** Called before every answer, with the method's name and line. */
    Asked asked = (method, line) -> {};

    interface Asked {
        void about(String method, int line);
    }

    FakeLayout(CharSequence text) {
        super(text, 300);
    }

    @Override
    public int getLineCount() {
        asked.about("getLineCount", 0);
        return lines;
    }

    @Override
    public int getLineBaseline(int line) {
        asked.about("getLineBaseline", line);
        return 20 * line + 15;
    }

    @Override
    public int getLineBottom(int line) {
        asked.about("getLineBottom", line);
        return 20 * line + 20;
    }

    @Override
    public int getLineAscent(int line) {
        asked.about("getLineAscent", line);
        return -12;
    }

    @Override
    public int getLineDescent(int line) {
        asked.about("getLineDescent", line);
        return 4;
    }

    @Override
    public int getLineStart(int line) {
        asked.about("getLineStart", line);
        return 10 * line;
    }

    @Override
    public int getLineVisibleEnd(int line) {
        asked.about("getLineVisibleEnd", line);
        return 10 * line + 8;
    }

    @Override
    public float getLineLeft(int line) {
        asked.about("getLineLeft", line);
        return 2.5f * line;
    }

    @Override
    public float getLineWidth(int line) {
        asked.about("getLineWidth", line);
        return 50.75f;
    }

    @Override
    public int getLineTop(int line) {
        return 20 * line;
    }

    @Override
    public int getTopPadding() {
        return 0;
    }

    @Override
    public int getBottomPadding() {
        return 0;
    }

    @Override
    public int getParagraphDirection(int line) {
        return DIR_RIGHT_TO_LEFT;
    }
}
