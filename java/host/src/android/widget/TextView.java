package android.widget;

import android.graphics.Typeface;
import android.text.Layout;
import android.text.StaticLayout;
import android.text.TextPaint;
import android.view.Gravity;
import android.view.View;

/** Shows a text. */
public class TextView extends View {
    private final TextPaint paint = new TextPaint(TextPaint.ANTI_ALIAS_FLAG);
    private CharSequence text = "";
    private int textColor = 0xFF000000;
    private int gravity = Gravity.TOP | Gravity.START;
    private int maxLines = Integer.MAX_VALUE;
    private float lineSpacing = 1;
    private Layout layout;

    public TextView() {
        paint.setTextSize(14);
    }

    public TextPaint getPaint() {
        return paint;
    }

    public CharSequence getText() {
        return text;
    }

    public void setText(CharSequence text) {
        this.text = text == null ? "" : text;
    }

    public float getTextSize() {
        return paint.getTextSize();
    }

    /** Pixels; the device's takes scaled ones. */
    public void setTextSize(float pixels) {
        paint.setTextSize(pixels);
    }

    public int getCurrentTextColor() {
        return textColor;
    }

    public void setTextColor(int color) {
        textColor = color;
    }

    /** May be null. */
    public Typeface getTypeface() {
        return paint.getTypeface();
    }

    public void setTypeface(Typeface typeface) {
        paint.setTypeface(typeface);
    }

    public int getGravity() {
        return gravity;
    }

    public void setGravity(int gravity) {
        this.gravity = gravity;
    }

    public int getMaxLines() {
        return maxLines;
    }

    public void setMaxLines(int lines) {
        maxLines = lines;
    }

    public void setLineSpacing(float add, float factor) {
        if (add != 0) throw new IllegalArgumentException("only a factor");
        lineSpacing = factor;
    }

    /** Null until the view has been placed; text and paint of that moment are laid out. */
    public final Layout getLayout() {
        return layout;
    }

    @Override
    public void layout(int left, int top, int right, int bottom) {
        super.layout(left, top, right, bottom);
        int width = Math.max(0, getWidth() - getPaddingLeft() - getPaddingRight());
        layout = StaticLayout.Builder.obtain(text, 0, text.length(), paint, width)
                .setAlignment(alignment())
                .setLineSpacing(0, lineSpacing)
                .build();
    }

    private Layout.Alignment alignment() {
        switch (gravity & Gravity.RELATIVE_HORIZONTAL_GRAVITY_MASK) {
            case Gravity.CENTER_HORIZONTAL: return Layout.Alignment.ALIGN_CENTER;
            case Gravity.LEFT: return Layout.Alignment.ALIGN_LEFT;
            case Gravity.RIGHT: return Layout.Alignment.ALIGN_RIGHT;
            case Gravity.END: return Layout.Alignment.ALIGN_OPPOSITE;
            default: return Layout.Alignment.ALIGN_NORMAL;
        }
    }
}
