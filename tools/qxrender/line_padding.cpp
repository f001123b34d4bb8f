#include "line_padding.h"

#include <algorithm>
#include <cmath>

#include <hwui/MinikinUtils.h>
#include <hwui/Typeface.h>

namespace qxrender {

namespace {

constexpr uint16_t kNoBreakSpace = 0x00A0;
constexpr uint16_t kEmSpace = 0x2003;
constexpr uint16_t kLeftToRightMark = 0x200E;
constexpr uint16_t kRightToLeftMark = 0x200F;

/// Ink of a pixel's edge that may be lost: invisible, and most upright letters would be padded without it.
constexpr float kTolerance = 0.1f;

}  // namespace

LinePadding::LinePadding(const std::vector<uint16_t>& units, const android::Paint& paint,
                         const android::Typeface& typeface)
    : mUnits(units), mPaint(paint), mTypeface(typeface) {}

void LinePadding::add(const qxhost::ParagraphLine& line) {
    const auto start = static_cast<size_t>(line.start);
    const auto count = static_cast<size_t>(line.visibleEnd - line.start);
    const minikin::Bidi bidi = line.rightToLeft ? minikin::Bidi::RTL : minikin::Bidi::LTR;
    const minikin::Layout layout = android::MinikinUtils::doLayout(&mPaint, bidi, &mTypeface, mUnits.data(),
                                                                   mUnits.size(), start, count, start, count, nullptr);
    minikin::MinikinRect ink{};
    layout.getBounds(&ink);
    mWidest = std::max({mWidest, layout.getAdvance(), ink.mRight - ink.mLeft});
    mTallest = std::max(mTallest, ink.mBottom - ink.mTop);
    const float missing = ink.mRight - ink.mLeft - std::trunc(std::max(layout.getAdvance(), 0.0f));
    if (!(missing > kTolerance)) return;
    std::vector<uint16_t> blanks = blanksFor(missing + std::max(-layout.getAdvance(), 0.0f), line.rightToLeft);
    if (!blanks.empty()) mInsertions.push_back({line.visibleEnd, std::move(blanks)});
}

float LinePadding::advanceOf(uint16_t unit) const {
    return android::MinikinUtils::doLayout(&mPaint, minikin::Bidi::LTR, &mTypeface, &unit, 1, 0, 1, 0, 1, nullptr)
        .getAdvance();
}

std::vector<uint16_t> LinePadding::blanksFor(float missing, bool rightToLeft) const {
    constexpr float kMostBlanks = 1000.0f;
    const uint16_t mark = rightToLeft ? kRightToLeftMark : kLeftToRightMark;
    // The mark has no width, but a letter spacing of its own. One pixel more makes up for the truncated advance.
    const float wanted = missing - advanceOf(mark) + 1.0f;
    // A letter spacing below zero can take all of the narrow blank's advance, and then the wide one helps.
    for (const uint16_t blank : {kNoBreakSpace, kEmSpace}) {
        const float needed = std::ceil(wanted / advanceOf(blank));
        if (!(needed > 0.0f && needed <= kMostBlanks)) continue;
        std::vector<uint16_t> blanks(static_cast<size_t>(needed), blank);
        // Keeps the blanks at the line's edge where its last word runs against the paragraph.
        blanks.push_back(mark);
        return blanks;
    }
    return {};
}

std::wstring LinePadding::paddedText() const {
    std::vector<uint16_t> padded;
    size_t copied = 0;
    for (const Insertion& insertion : mInsertions) {
        padded.insert(padded.end(), mUnits.begin() + static_cast<ptrdiff_t>(copied), mUnits.begin() + insertion.at);
        padded.insert(padded.end(), insertion.blanks.begin(), insertion.blanks.end());
        copied = static_cast<size_t>(insertion.at);
    }
    padded.insert(padded.end(), mUnits.begin() + static_cast<ptrdiff_t>(copied), mUnits.end());

    std::wstring text;
    for (size_t i = 0; i < padded.size(); ++i) {
        const uint32_t unit = padded[i];
        const bool pair = unit >= 0xD800 && unit < 0xDC00 && i + 1 < padded.size();
        text += static_cast<wchar_t>(pair ? 0x10000 + ((unit - 0xD800) << 10) + (padded[++i] - 0xDC00u) : unit);
    }
    return text;
}

void LinePadding::moveLines(std::vector<qxhost::ParagraphLine>& lines) const {
    int inserted = 0;
    auto next = mInsertions.begin();
    for (qxhost::ParagraphLine& line : lines) {
        line.start += inserted;
        if (next != mInsertions.end() && line.visibleEnd == next->at) {
            inserted += static_cast<int>(next->blanks.size());
            ++next;
        }
        line.visibleEnd += inserted;
        line.end += inserted;
    }
}

}  // namespace qxrender
