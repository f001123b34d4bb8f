#include "paragraph.h"

#include <unicode/ubidi.h>

#include <algorithm>
#include <cmath>

#include <hwui/MinikinUtils.h>
#include <hwui/Paint.h>
#include <hwui/Typeface.h>

#include "line_breaker.h"
#include "line_metrics.h"

namespace qxhost {

namespace {

/// One paragraph of the text: [start, end) without its newline, which ends at `next`.
struct Range {
    size_t start;
    size_t end;
    size_t next;
};

bool isNewline(uint16_t unit) {
    return unit == '\n' || unit == '\r';
}

/// A newline at the very end opens one more, empty paragraph, as an editor shows it.
std::vector<Range> splitParagraphs(const uint16_t* text, size_t count) {
    std::vector<Range> ranges;
    for (size_t start = 0;;) {
        size_t end = start;
        while (end < count && !isNewline(text[end])) ++end;
        if (end == count) {
            ranges.push_back({start, end, end});
            return ranges;
        }
        const bool pair = text[end] == '\r' && end + 1 < count && text[end + 1] == '\n';
        ranges.push_back({start, end, end + (pair ? 2 : 1)});
        start = ranges.back().next;
    }
}

bool isRightToLeft(const uint16_t* text, const Range& range) {
    return ubidi_getBaseDirection(reinterpret_cast<const UChar*>(text + range.start),
                                  static_cast<int32_t>(range.end - range.start)) == UBIDI_RTL;
}

/// Lays out one paragraph after the other below what is there.
class Builder {
public:
    Builder(const uint16_t* text, size_t count, const android::Paint& paint, const android::Typeface* typeface,
            const ParagraphStyle& style)
        : mText(text),
          mCount(count),
          mPaint(paint),
          mTypeface(typeface),
          mStyle(style),
          mMetrics(paint, typeface),
          // NaN fails the comparison and wraps nowhere.
          mWraps(style.width > 0.0f) {}

    Paragraph build() {
        for (const Range& range : splitParagraphs(mText, mCount)) addParagraph(range);
        mParagraph.lines.back().visibleEnd = mParagraph.lines.back().end;
        measureAndAlign();
        mParagraph.height = mBottom;
        return std::move(mParagraph);
    }

private:
    /// The range is its own context: handing the whole paragraph over for each of its lines would cost the square of
    /// its length. The direction that the paragraph has is given instead.
    minikin::Layout shape(size_t start, size_t end) const {
        if (mTypeface == nullptr) return minikin::Layout();
        const minikin::Bidi bidi = mRightToLeft ? minikin::Bidi::RTL : minikin::Bidi::LTR;
        return android::MinikinUtils::doLayout(&mPaint, bidi, mTypeface, mText, mCount, start, end - start, start,
                                               end - start, nullptr);
    }

    void addParagraph(const Range& range) {
        mRightToLeft = isRightToLeft(mText, range);
        if (!mWraps || range.start == range.end) {
            addLine(range.start, range.end);
        } else {
            const size_t length = range.end - range.start;
            std::vector<float> advances = shape(range.start, range.end).getAdvances();
            advances.resize(length);
            const LineBreaker breaker(mText + range.start, length);
            for (size_t from = 0; from < length;) {
                const size_t to = breaker.lineEnd(from, advances, mStyle.width);
                addLine(range.start + from, range.start + to);
                from = to;
            }
        }
        mParagraph.lines.back().end = static_cast<int>(range.next);
    }

    void addLine(size_t start, size_t end) {
        size_t visible = end;
        while (visible > start && isBlank(mText[visible - 1])) --visible;

        const minikin::Layout layout = shape(start, visible);
        const LineHeights heights = mMetrics.of(layout);
        ParagraphLine line{};
        line.start = static_cast<int>(start);
        line.end = static_cast<int>(end);
        line.visibleEnd = static_cast<int>(visible);
        line.width = layout.getAdvance();
        line.ascent = heights.ascent;
        line.descent = heights.descent;
        line.top = mBottom;
        line.baseline = mBottom - heights.ascent;
        line.rightToLeft = mRightToLeft;
        const float factor = std::clamp(mStyle.lineSpacing, 0.1f, 10.0f);
        mBottom += static_cast<int>(std::lround(static_cast<float>(heights.descent - heights.ascent) * factor));
        line.bottom = mBottom;
        mParagraph.lines.push_back(line);
    }

    void measureAndAlign() {
        mParagraph.width = mWraps ? mStyle.width : 0.0f;
        if (!mWraps)
            for (const ParagraphLine& line : mParagraph.lines)
                mParagraph.width = std::max(mParagraph.width, std::ceil(line.width));
        for (ParagraphLine& line : mParagraph.lines) line.left = leftOf(line);
    }

    float leftOf(const ParagraphLine& line) const {
        const float room = mParagraph.width - line.width;
        switch (mStyle.alignment) {
            case Alignment::Left:
                return 0.0f;
            case Alignment::Right:
                return room;
            case Alignment::Center:
                return std::floor(room / 2);
            case Alignment::Start:
                return line.rightToLeft ? room : 0.0f;
            case Alignment::End:
                return line.rightToLeft ? 0.0f : room;
        }
        return 0.0f;
    }

    const uint16_t* mText;
    const size_t mCount;
    const android::Paint& mPaint;
    const android::Typeface* mTypeface;
    const ParagraphStyle mStyle;
    LineMetrics mMetrics;
    const bool mWraps;
    bool mRightToLeft = false;
    int mBottom = 0;
    Paragraph mParagraph;
};

}  // namespace

Paragraph layoutParagraphs(const uint16_t* text, size_t count, const android::Paint& paint,
                           const android::Typeface* typeface, const ParagraphStyle& style) {
    return Builder(text, count, paint, typeface, style).build();
}

}  // namespace qxhost
