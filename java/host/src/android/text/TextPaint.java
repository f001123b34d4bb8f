package android.text;

import android.graphics.Paint;

/** The paint of laid out text. */
public class TextPaint extends Paint {
    public TextPaint() {}

    public TextPaint(int flags) {
        super(flags);
    }
}
