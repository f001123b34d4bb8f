package android.text;

import java.lang.reflect.Array;
import java.util.ArrayList;
import java.util.List;

/** Text and spans; apart from the public class because there, too, the methods are inherited. */
abstract class SpannableStringInternal {
    private static final class Attached {
        final Object span;
        final int start;
        final int end;
        final int flags;

        Attached(Object span, int start, int end, int flags) {
            this.span = span;
            this.start = start;
            this.end = end;
            this.flags = flags;
        }

        int priority() {
            return flags & Spanned.SPAN_PRIORITY;
        }

        boolean touches(int from, int to) {
            if (start > to || end < from) return false;
            boolean ranges = start != end && from != to;
            return !ranges || start != to && end != from;
        }
    }

    private final String text;
    private final List<Attached> spans = new ArrayList<>();

    SpannableStringInternal(CharSequence source) {
        text = source.toString();
        if (!(source instanceof Spanned)) return;
        Spanned spanned = (Spanned) source;
        for (Object span : spanned.getSpans(0, source.length(), Object.class)) {
            setSpan(span, spanned.getSpanStart(span), spanned.getSpanEnd(span), spanned.getSpanFlags(span));
        }
    }

    public final int length() {
        return text.length();
    }

    public final char charAt(int index) {
        return text.charAt(index);
    }

    @Override
    public final String toString() {
        return text;
    }

    void setSpan(Object span, int start, int end, int flags) {
        if (start < 0 || end > text.length() || end < start) throw new IndexOutOfBoundsException();
        spans.removeIf(attached -> attached.span == span);
        spans.add(new Attached(span, start, end, flags));
    }

    @SuppressWarnings("unchecked")
    public <T> T[] getSpans(int start, int end, Class<T> kind) {
        List<Attached> found = new ArrayList<>();
        for (Attached attached : spans) {
            if (!kind.isInstance(attached.span) || !attached.touches(start, end)) continue;
            int place = found.size();
            while (place > 0 && found.get(place - 1).priority() < attached.priority()) --place;
            found.add(place, attached);
        }
        T[] result = (T[]) Array.newInstance(kind, found.size());
        for (int i = 0; i < result.length; ++i) result[i] = (T) found.get(i).span;
        return result;
    }

    private Attached find(Object span) {
        for (Attached attached : spans) if (attached.span == span) return attached;
        return null;
    }

    public int getSpanStart(Object span) {
        Attached attached = find(span);
        return attached == null ? -1 : attached.start;
    }

    public int getSpanEnd(Object span) {
        Attached attached = find(span);
        return attached == null ? -1 : attached.end;
    }

    public int getSpanFlags(Object span) {
        Attached attached = find(span);
        return attached == null ? 0 : attached.flags;
    }
}
