package android.text;

/** A text whose characters stay and whose spans may change. */
public class SpannableString extends SpannableStringInternal implements Spanned {
    /** Copies the text, and the spans if it has any. */
    public SpannableString(CharSequence source) {
        super(source);
    }

    @Override
    public void setSpan(Object span, int start, int end, int flags) {
        super.setSpan(span, start, end, flags);
    }

    @Override
    public CharSequence subSequence(int start, int end) {
        return toString().substring(start, end);
    }
}
