#include "effect/relief_passes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "effect/kernel/pinned_math.h"

namespace QxFontEffect {
namespace {

static_assert(kReliefBlock % kDistanceBlock == 0, "rows of heights are lit in whole blocks");

// Heights beside a row that slopes and whole vectors read.
constexpr ptrdiff_t kHeightMargin = 16;

int blocksOf(int columns) {
    return (columns + kReliefBlock - 1) / kReliefBlock;
}

MapRegion common(const MapRegion& a, const MapRegion& b) {
    const int left = std::max(a.left, b.left), top = std::max(a.top, b.top);
    return {left, top, std::max(left, std::min(a.right, b.right)), std::max(top, std::min(a.bottom, b.bottom))};
}

/// A part of the area with `reach` pixels around it, as far as the area goes.
MapRegion grown(const MapRegion& part, int reach, const ReliefArea& area) {
    return common({part.left - reach, part.top - reach, part.right + reach, part.bottom + reach},
                  {0, 0, area.width, area.height});
}

/// The area less a frame.
MapRegion framed(const ReliefArea& area, int frame) {
    return common({frame, frame, area.width - frame, area.height - frame}, {0, 0, area.width, area.height});
}

FlatLight flatLight(const ReliefLight& light, const ReliefBand& band) {
    const float flat[3] = {0.0f, 0.0f, 0.0f};
    FlatLight lit = {};
    lightReliefRow(flat + 1, flat + 1, flat + 1, 1, light, band, &lit.shadow, &lit.highlight);
    return lit;
}

// 3.14159 and not pi: shades are truncated to bytes, and the last digits decide which.
inline float shortRadians(float degrees) {
    return degrees * 3.14159f / 180.0f;
}

}  // namespace

bool hasFiniteSettings(const QxReliefProperty& property) {
    return std::isfinite(property.size) && std::isfinite(property.depth) && std::isfinite(property.angle) &&
           std::isfinite(property.altitude);
}

ReliefLight reliefLight(const QxReliefProperty& property) {
    const float azimuth = shortRadians(180.0f - property.angle);
    const float elevation = shortRadians(property.altitude);
    const float level = pinnedCos(elevation);
    float lx = pinnedCos(azimuth) * level;
    float ly = pinnedSin(azimuth) * level;
    if (property.direction == 0) {
        lx = -lx;
        ly = -ly;
    }
    return {2.4f / std::max(property.depth, 0.1f),
            lx,
            ly,
            pinnedSin(elevation),
            static_cast<int32_t>(property.shadowColor >> 24),
            static_cast<int32_t>(property.highlightColor >> 24)};
}

bool reliefArea(const QxRect& rect, int64_t margin, const ReliefBlur* blurs, int blurCount, int64_t columns,
                int64_t rows, ReliefArea& area) {
    constexpr int64_t kFar = int64_t{1} << 29;
    const int64_t left = rect.left - margin, top = rect.top - margin;
    const int64_t right = rect.right + margin, bottom = rect.bottom + margin;
    if (rect.right < rect.left || rect.bottom < rect.top || left < -kFar || top < -kFar || right > kFar ||
        bottom > kFar)
        return false;
    area.x = static_cast<int32_t>(left);
    area.y = static_cast<int32_t>(top);
    area.width = static_cast<int32_t>(right - left);
    area.height = static_cast<int32_t>(bottom - top);
    area.blurCount = 0;
    // Slopes reach a pixel beyond what is lit.
    int reach = 1;
    for (int i = 0; i < blurCount; ++i) {
        if (blurs[i].radius < 1) continue;
        area.blurs[area.blurCount++] = blurs[i];
        reach += blurs[i].radius;
    }

    const auto within = [](int64_t value, int64_t side) {
        return static_cast<int>(std::clamp<int64_t>(value, 0, side));
    };
    area.shown = {within(-left, area.width), within(-top, area.height), within(columns - left, area.width),
                  within(rows - top, area.height)};
    area.worked = grown(area.shown, reach, area);
    return area.shown.width() > 0 && area.shown.height() > 0 && fitsMemory(area.worked);
}

bool fitsMemory(const MapRegion& region) {
    return int64_t{region.width()} * region.height() <= kMaxReliefPixels;
}

PlacedInk inkOn(const ReliefArea& area, ConstPlane8 coverage, const QxRect& rect) {
    const int left = std::max(rect.left, 0), top = std::max(rect.top, 0);
    const int right = std::min(rect.right, coverage.width), bottom = std::min(rect.bottom, coverage.height);
    if (left >= right || top >= bottom) return {{coverage.data, 0, 0, coverage.stride}, 0, 0};
    return {{coverage.row(top) + left, right - left, bottom - top, coverage.stride},
            left - area.x - area.worked.left,
            top - area.y - area.worked.top};
}

ReliefMaps::ReliefMaps(const MapRegion& part, int rows)
    : region(part),
      stride(blocksOf(part.width()) * ptrdiff_t{kReliefBlock}),
      shadow(Scratch<uint8_t>::zeroed(stride, rows)),
      highlight(Scratch<uint8_t>::zeroed(stride, rows)) {}

ReliefMapBlur::ReliefMapBlur(const ReliefArea& area, const ReliefBlur& blur, const ReliefMaps& from,
                             const MapRegion& wanted)
    : mBell(makeGaussBell(blur.radius, kSoftPeak)),
      mOut(common(wanted, framed(area, blur.frame))),
      mShadowJob(jobOn(from.shadow, from, common(from.region, framed(area, blur.frame)))),
      mHighlightJob(jobOn(from.highlight, from, common(from.region, framed(area, blur.frame)))),
      mShadowScratch(GaussRows::scratchBytes(mShadowJob)),
      mHighlightScratch(GaussRows::scratchBytes(mHighlightJob)) {}

/// The vertical pass reads all rows, the frame's too; the horizontal pass sees the columns within the frame only.
GaussJob ReliefMapBlur::jobOn(const Scratch<uint8_t>& map, const ReliefMaps& from, const MapRegion& seen) const {
    const ConstPlane8 columns{map.data() + (seen.left - from.region.left), seen.width(), from.region.height(),
                              from.stride};
    return {columns,
            &mBell,
            {mOut.left - seen.left, mOut.right - seen.left, mOut.top - from.region.top, mOut.bottom - from.region.top},
            GaussRounding::Down,
            GaussRounding::Down};
}

void ReliefMapBlur::begin() {
    mShadow.emplace(mShadowJob, mShadowScratch.data());
    mHighlight.emplace(mHighlightJob, mHighlightScratch.data());
}

int ReliefMapBlur::next(uint8_t* shadow, uint8_t* highlight, ptrdiff_t stride) {
    mShadow->next(shadow, stride);
    return mHighlight->next(highlight, stride);
}

ReliefPainter::ReliefPainter(const ReliefArea& area, const ReliefLight& light, const ReliefBand& band,
                             const ReliefColors& colors, const ReliefKernels& kernels)
    : mArea(area),
      mLight(light),
      mBand(band),
      mColors(colors),
      mKernels(kernels),
      mFlat(flatLight(light, band)),
      mLit(area.worked, area.blurCount == 0 ? 1 : area.worked.height()),
      mSoft(area.blurCount == 2 ? grown(area.shown, area.blurs[1].radius, area) : MapRegion{0, 0, 0, 0},
            area.blurCount == 2 ? grown(area.shown, area.blurs[1].radius, area).height() : 0),
      mOut(area.shown),
      mStrip(area.shown, kGaussRows),
      mHeightStride(mLit.stride + 2 * kHeightMargin),
      mHeightRing(Scratch<float>::zeroed(mHeightStride, 3)),
      mPixels(mStrip.stride) {
    if (area.blurCount == 0 || !mLit || !mSoft) return;
    if (area.blurCount == 2) mFirst.emplace(area, area.blurs[0], mLit, mSoft.region);
    mLast.emplace(area, area.blurs[area.blurCount - 1], area.blurCount == 2 ? mSoft : mLit, area.shown);
    mOut = mLast->out();
}

ReliefPainter::operator bool() const {
    const bool blurs = mArea.blurCount == 0 || (mLast && *mLast && (!mFirst || *mFirst));
    return mLit && mSoft && mStrip && mHeightRing && mPixels && blurs;
}

void ReliefPainter::begin(HeightRows& heights) {
    mHeights = &heights;
    if (mArea.blurCount == 0) return;
    for (int y = mLit.region.top; y < mLit.region.bottom; ++y) lightRow(y, mLit.shadowRow(y), mLit.highlightRow(y));
    if (mFirst) {
        mFirst->begin();
        const MapRegion& out = mFirst->out();
        const ptrdiff_t left = out.left - mSoft.region.left;
        for (int y = out.top, rows; y < out.bottom; y += rows) {
            rows = mFirst->next(mSoft.shadowRow(y) + left, mSoft.highlightRow(y) + left, mSoft.stride);
            if (rows == 0) break;
        }
    }
    mLast->begin();
    mStrip.region = mOut;
}

float* ReliefPainter::heightsOf(int y) {
    return mHeightRing.data() + (y - mArea.worked.top) % 3 * mHeightStride + kHeightMargin;
}

/// Slopes need both neighbours, so the outermost pixels of the area stay dark; those of a part of it are not shown.
void ReliefPainter::lightRow(int y, uint8_t* shadow, uint8_t* highlight) {
    const MapRegion& worked = mArea.worked;
    if (y == worked.top || y == worked.bottom - 1) {
        std::memset(shadow, 0, static_cast<size_t>(mLit.stride));
        std::memset(highlight, 0, static_cast<size_t>(mLit.stride));
        return;
    }
    for (; mTaken < y + 2 - worked.top; ++mTaken) mHeights->next(heightsOf(worked.top + mTaken));
    const int blocks = static_cast<int>(mLit.stride / kReliefBlock);
    mKernels.light(heightsOf(y - 1), heightsOf(y), heightsOf(y + 1), blocks, mLight, mBand, mFlat, shadow, highlight);
    const int last = worked.width() - 1;
    shadow[0] = highlight[0] = shadow[last] = highlight[last] = 0;
}

bool ReliefPainter::colorRow(int y) {
    const int blocks = blocksOf(mOut.width());
    if (!mLast) {
        lightRow(y, mLit.shadowRow(mLit.region.top), mLit.highlightRow(mLit.region.top));
        const ptrdiff_t left = mOut.left - mLit.region.left;
        // Shifted to the part's first column, so that whole blocks can be read from it.
        std::memcpy(mStrip.shadow.data(), mLit.shadow.data() + left, static_cast<size_t>(mOut.width()));
        std::memcpy(mStrip.highlight.data(), mLit.highlight.data() + left, static_cast<size_t>(mOut.width()));
        return mKernels.color(mStrip.shadow.data(), mStrip.highlight.data(), blocks, mColors, mPixels.data());
    }
    if (y >= mStrip.region.top + mStripRows) {
        mStrip.region.top += mStripRows;
        mStripRows = mLast->next(mStrip.shadow.data(), mStrip.highlight.data(), mStrip.stride);
    }
    return mKernels.color(mStrip.shadowRow(y), mStrip.highlightRow(y), blocks, mColors, mPixels.data());
}

}  // namespace QxFontEffect
