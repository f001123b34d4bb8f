package android.text;

/** A text broken into lines. Pixels, y down from the top of the text. */
public abstract class Layout {
    public static final int DIR_LEFT_TO_RIGHT = 1;
    public static final int DIR_RIGHT_TO_LEFT = -1;

    public enum Alignment { ALIGN_NORMAL, ALIGN_OPPOSITE, ALIGN_CENTER, ALIGN_LEFT, ALIGN_RIGHT }

    private final CharSequence text;
    private final int width;

    protected Layout(CharSequence text, int width) {
        this.text = text;
        this.width = width;
    }

    public final CharSequence getText() {
        return text;
    }

    public final int getWidth() {
        return width;
    }

    public int getHeight() {
        return getLineTop(getLineCount());
    }

    public abstract int getTopPadding();

    public abstract int getBottomPadding();

    public abstract int getLineCount();

    /** 1 or -1. */
    public abstract int getParagraphDirection(int line);

    public int getParagraphLeft(int line) {
        return 0;
    }

    public int getParagraphRight(int line) {
        return width;
    }

    /** Also of the line behind the last one: the bottom of the text. */
    public abstract int getLineTop(int line);

    public int getLineBottom(int line) {
        return getLineTop(line + 1);
    }

    public abstract int getLineDescent(int line);

    public int getLineBaseline(int line) {
        return getLineTop(line + 1) - getLineDescent(line);
    }

    /** Negative. */
    public int getLineAscent(int line) {
        return getLineTop(line) - (getLineTop(line + 1) - getLineDescent(line));
    }

    /** Also of the line behind the last one: the length of the text. */
    public abstract int getLineStart(int line);

    public int getLineEnd(int line) {
        return getLineStart(line + 1);
    }

    /** Without newline and trailing blanks, except that the last line ends with the text. */
    public abstract int getLineVisibleEnd(int line);

    public abstract float getLineLeft(int line);

    public float getLineRight(int line) {
        return getLineLeft(line) + getLineWidth(line);
    }

    public float getLineMax(int line) {
        return getLineWidth(line);
    }

    public abstract float getLineWidth(int line);
}
