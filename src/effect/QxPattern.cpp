#include "effect/QxPattern.h"

#include <algorithm>
#include <new>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/ink_runs.h"
#include "effect/kernel/pattern.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {

struct QxPattern::KeptCopy {
    QxBitmap bitmap;
    KeptCopy* older;
};

namespace {

constexpr float kSmallestScale = 0.1f;

// Scaled tiles up to this many pixels are drawn once and kept while the rows go by: half a megabyte.
constexpr int64_t kLargestKeptTile = int64_t{128} * 1024;

/// Pixels after which the fill repeats along one side, at most the rectangle's side; 0 when nothing can be drawn.
int32_t period(float scale, int32_t imageSide, int32_t rectSide) {
    const int32_t tileSide = truncToInt(scale * static_cast<float>(imageSide));
    if (tileSide > 0) return std::min(tileSide, rectSide);
    // Of a tile thinner than a pixel only the first pixel has a place in the image.
    return rectSide == 1 ? 1 : 0;
}

/// Rows of the pattern, repeated over the text rectangle.
class TileRows {
public:
    TileRows(const kernel::PatternImage& image, float scale, float opacity, int32_t width, int32_t height)
        : mImage(image),
          mScale(scale),
          mColumns(period(scale, image.width, width)),
          mRows(period(scale, image.height, height)),
          mKept(isWorthKeeping(int64_t{mColumns} * mRows, int64_t{width} * height)),
          mTaps(mKept ? mColumns : width),
          mPixels(mKept ? mColumns : 0, mRows),
          mDrawn(Scratch<uint8_t>::zeroed(mKept ? mRows : 0, 1)) {
        for (int i = 0; i < 256; ++i)
            mAlphas[i] = static_cast<uint8_t>(std::clamp(truncToInt(opacity * static_cast<float>(i)), 0, 255));
        for (size_t c = 0; mColumns > 0 && mTaps && c < mTaps.count(); ++c)
            mTaps[c] = kernel::patternTap(static_cast<int32_t>(c) % mColumns, scale, image.width);
    }

    explicit operator bool() const { return mColumns > 0 && mRows > 0 && mTaps && mPixels && mDrawn; }

    /// Draws pixels begin..end - 1 of row `y` at `dst`.
    void draw(int32_t y, int32_t begin, int32_t end, uint32_t* dst) {
        const int32_t tileRow = y % mRows;
        const kernel::PatternTap tap = kernel::patternTap(tileRow, mScale, mImage.height);
        if (!mKept) {
            kernel::patternSpan(mImage, tap, mTaps.data() + begin, mAlphas, end - begin, dst);
            return;
        }
        uint32_t* row = mPixels.data() + static_cast<size_t>(tileRow) * static_cast<size_t>(mColumns);
        uint8_t& drawn = mDrawn[static_cast<size_t>(tileRow)];
        if (drawn == 0) kernel::patternSpan(mImage, tap, mTaps.data(), mAlphas, mColumns, row);
        drawn = 1;
        for (int32_t at = begin; at < end;) {
            const int32_t from = at % mColumns;
            const int32_t count = std::min(end - at, mColumns - from);
            dst = std::copy_n(row + from, count, dst);
            at += count;
        }
    }

private:
    // Most of a text's box is blank, so a tile that hardly repeats is cheaper drawn where there is ink.
    static bool isWorthKeeping(int64_t tilePixels, int64_t boxPixels) {
        return tilePixels <= kLargestKeptTile && 2 * tilePixels <= boxPixels;
    }

    kernel::PatternImage mImage;
    float mScale;
    int32_t mColumns;
    int32_t mRows;
    bool mKept;
    Scratch<kernel::PatternTap> mTaps;
    Scratch<uint32_t> mPixels;
    Scratch<uint8_t> mDrawn;
    uint8_t mAlphas[256];
};

}  // namespace

QxPattern::QxPattern() : property(nullptr), copies(nullptr) {
    style = QXE_PATTERN;
}

QxPattern::~QxPattern() {
    delete property;
    while (copies != nullptr) {
        KeptCopy* older = copies->older;
        delete copies;
        copies = older;
    }
}

void QxPattern::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    const QxPatternProperty& given = *static_cast<QxPatternProperty*>(p);
    QxBitmap* const original = given.pattern;
    KeptCopy* copy = original == nullptr ? nullptr : new (std::nothrow) KeptCopy{*original, copies};
    if (copy != nullptr) copies = copy;
    replaceRecord(property, copy == nullptr ? nullptr : &copy->bitmap, given.scale, given.opacity);

    const bool copied =
        original == nullptr || (copy != nullptr && (copy->bitmap.pixels != nullptr) == (original->pixels != nullptr));
    if (copied) return;
    delete property;
    property = nullptr;
}

void QxPattern::doPostProcessing(ParamPostProcessing* p) {
    if (!drawable(p, property) || !(property->scale >= kSmallestScale)) return;
    const QxBitmap* pattern = property->pattern;
    if (!hasPixels(pattern, 4) || pattern->width == 0 || pattern->height == 0) return;

    const QxRect rect = inkRect(*p);
    const int32_t width = rect.right - rect.left;
    const int32_t height = rect.bottom - rect.top;
    if (width < 1 || height < 1) return;

    TileRows tile({pattern->pixels, sideOf(pattern->width), sideOf(pattern->height)}, property->scale,
                  property->opacity, width, height);
    Scratch<uint32_t> line(width);
    if (!tile || !line) return;

    const ConstPlane8 coverage = coverageOf(*p->srcBitmap);
    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* ink = coverage.row(rect.top + y) + rect.left;
        kernel::InkRun run = kernel::nextInkRun(ink, 0, width);
        const int32_t begin = run.begin;
        int32_t end = begin;
        for (; !run.empty(); run = kernel::nextInkRun(ink, end, width)) {
            std::fill(line.data() + end, line.data() + run.begin, 0u);
            tile.draw(y, run.begin, run.end, line.data() + run.begin);
            end = run.end;
        }
        // The ink selects pixels and does not weight them; the gaps are transparent.
        QxBlender::drawBitmapBlend32(rect.left + begin, rect.top + y, p->dstBitmap, line.data() + begin, end - begin, 1,
                                     end - begin, QXE_BLEND_DST_OVER);
    }
}

}  // namespace QxFontEffect
