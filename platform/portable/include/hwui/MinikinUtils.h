#pragma once

#include <cstddef>
#include <cstdint>

#include <hwui/MinikinSkia.h>
#include <hwui/Paint.h>
#include <hwui/Typeface.h>
#include <minikin/Layout.h>
#include <minikin/MeasuredText.h>

namespace android {

class MinikinUtils {
public:
    /// Lays out count UTF-16 units from start on, as one line.
    ///
    /// Any combination of numbers is safe: ranges are cut to the buffer. The time depends on the context, not on
    /// the buffer.
    ///
    /// @param buf           the text, bufSize units; may hold lone surrogates.
    /// @param contextStart  start of the paragraph that decides direction and joining; should hold start.
    /// @param measuredText  not used by the portable layer; null.
    static minikin::Layout doLayout(const Paint* paint, minikin::Bidi bidiFlags, const Typeface* typeface,
                                    const uint16_t* buf, size_t bufSize, size_t start, size_t count,
                                    size_t contextStart, size_t contextCount, minikin::MeasuredText* measuredText);

    /// Calls f(first, end) for each stretch of glyphs with one font, after setting the font on the paint.
    ///
    /// The stretch ends where the font changes, not where its fakery does; the fakery is the first glyph's. Skew and
    /// emboldening are put back after each call, the last typeface stays in the paint.
    template <typename F>
    static void forFontRun(const minikin::Layout& layout, Paint* paint, F& f) {
        SkFont& font = paint->getSkFont();
        const float skewX = font.getSkewX();
        const bool embolden = font.isEmbolden();
        const int count = static_cast<int>(layout.nGlyphs());
        for (int first = 0, end = 0; first < count; first = end) {
            const minikin::MinikinFont* run = layout.getFont(first);
            for (end = first + 1; end < count && layout.getFont(end) == run;) ++end;
            MinikinFontSkia::populateSkFont(&font, run, layout.getFakery(first));
            f(static_cast<size_t>(first), static_cast<size_t>(end));
            font.setSkewX(skewX);
            font.setEmbolden(embolden);
        }
    }
};

}  // namespace android
