package android.text;

import qx.host.HostLibrary;
import qx.host.LaidOutLines;

/** A layout of a text that does not change, made by the text stack of the desktop. */
public class StaticLayout extends Layout {
    /** Gathers what a layout needs. */
    public static final class Builder {
        private final CharSequence text;
        private final TextPaint paint;
        private final int width;
        private Alignment alignment = Alignment.ALIGN_NORMAL;
        private float spacing = 1;

        private Builder(CharSequence text, TextPaint paint, int width) {
            this.text = text;
            this.paint = paint;
            this.width = width;
        }

        /** The range must be the whole text. */
        public static Builder obtain(CharSequence source, int start, int end, TextPaint paint, int width) {
            if (start != 0 || end != source.length()) throw new IllegalArgumentException("only whole texts");
            return new Builder(source, paint, width);
        }

        public Builder setAlignment(Alignment alignment) {
            this.alignment = alignment;
            return this;
        }

        /** @param add must be 0. */
        public Builder setLineSpacing(float add, float factor) {
            if (add != 0) throw new IllegalArgumentException("only a factor");
            spacing = factor;
            return this;
        }

        public StaticLayout build() {
            return new StaticLayout(this);
        }
    }

    private final LaidOutLines lines;

    private StaticLayout(Builder builder) {
        super(builder.text, builder.width);
        lines = HostLibrary.layOut(builder.text.toString(), builder.paint, builder.width, builder.alignment,
                builder.spacing);
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
    public int getLineCount() {
        return lines.count();
    }

    @Override
    public int getParagraphDirection(int line) {
        return lines.rightToLeft(line) ? DIR_RIGHT_TO_LEFT : DIR_LEFT_TO_RIGHT;
    }

    @Override
    public int getLineTop(int line) {
        return line == lines.count() ? lines.bottom(line - 1) : lines.top(line);
    }

    @Override
    public int getLineDescent(int line) {
        return lines.bottom(line) - lines.baseline(line);
    }

    @Override
    public int getLineStart(int line) {
        return line == lines.count() ? lines.end(line - 1) : lines.start(line);
    }

    @Override
    public int getLineVisibleEnd(int line) {
        return lines.visibleEnd(line);
    }

    @Override
    public float getLineLeft(int line) {
        return lines.left(line);
    }

    @Override
    public float getLineWidth(int line) {
        return lines.width(line);
    }
}
