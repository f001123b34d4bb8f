package android.text;

/** A text with objects attached to ranges of it. */
public interface Spanned extends CharSequence {
    int SPAN_PRIORITY_SHIFT = 16;
    int SPAN_PRIORITY = 0xFF << SPAN_PRIORITY_SHIFT;
    int SPAN_EXCLUSIVE_EXCLUSIVE = 0x21;

    /** The objects of a kind that touch a range: higher priority first, otherwise in order of attachment. */
    <T> T[] getSpans(int start, int end, Class<T> kind);

    int getSpanStart(Object span);

    int getSpanEnd(Object span);

    int getSpanFlags(Object span);
}
