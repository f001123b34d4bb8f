package android.view;

/** A rectangle on the screen. */
public class View {
    public static final int TEXT_DIRECTION_FIRST_STRONG = 1;
    public static final int LAYOUT_DIRECTION_LTR = 0;

    private int width;
    private int height;
    private int paddingLeft;
    private int paddingTop;
    private int paddingRight;
    private int paddingBottom;

    /** Places the view within its parent. */
    public void layout(int left, int top, int right, int bottom) {
        width = right - left;
        height = bottom - top;
    }

    public final int getWidth() {
        return width;
    }

    public final int getHeight() {
        return height;
    }

    public void setPadding(int left, int top, int right, int bottom) {
        paddingLeft = left;
        paddingTop = top;
        paddingRight = right;
        paddingBottom = bottom;
    }

    public int getPaddingLeft() {
        return paddingLeft;
    }

    public int getPaddingTop() {
        return paddingTop;
    }

    public int getPaddingRight() {
        return paddingRight;
    }

    public int getPaddingBottom() {
        return paddingBottom;
    }

    public int getTextDirection() {
        return TEXT_DIRECTION_FIRST_STRONG;
    }

    public int getLayoutDirection() {
        return LAYOUT_DIRECTION_LTR;
    }
}
