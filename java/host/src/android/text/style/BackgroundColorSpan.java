package android.text.style;

/** A colour behind a part of a text. */
public class BackgroundColorSpan {
    private final int color;

    public BackgroundColorSpan(int color) {
        this.color = color;
    }

    public int getBackgroundColor() {
        return color;
    }
}
