#include "effect/relief_passes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "effect/kernel/gauss.h"
#include "effect/kernel/pinned_math.h"

namespace QxFontEffect {
namespace {

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

bool reliefArea(const QxRect& rect, int64_t margin, ReliefArea& area) {
    constexpr int64_t kFar = int64_t{1} << 30;
    const int64_t left = rect.left - margin, top = rect.top - margin;
    const int64_t right = rect.right + margin, bottom = rect.bottom + margin;
    if (rect.right < rect.left || rect.bottom < rect.top || left < -kFar || top < -kFar || right > kFar ||
        bottom > kFar)
        return false;
    if ((right - left) * (bottom - top) > kMaxReliefPixels) return false;
    area = {static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(right - left),
            static_cast<int32_t>(bottom - top)};
    return true;
}

PlacedInk inkOn(const ReliefArea& area, ConstPlane8 coverage, const QxRect& rect) {
    const int left = std::max(rect.left, 0), top = std::max(rect.top, 0);
    const int right = std::min(rect.right, coverage.width), bottom = std::min(rect.bottom, coverage.height);
    if (left >= right || top >= bottom) return {{coverage.data, 0, 0, coverage.stride}, 0, 0};
    return {{coverage.row(top) + left, right - left, bottom - top, coverage.stride}, left - area.x, top - area.y};
}

ReliefMaps::ReliefMaps(int width, int height)
    : mWidth(width),
      mHeight(height),
      mShadow(Scratch<uint8_t>::zeroed(width, height)),
      mHighlight(Scratch<uint8_t>::zeroed(width, height)),
      mSpare(width, height) {}

void ReliefMaps::light(ConstPlaneF heights, const ReliefLight& light, const ReliefBand& band) {
    for (int y = 1; y < mHeight - 1; ++y) {
        const ptrdiff_t start = ptrdiff_t{y} * mWidth + 1;
        lightReliefRow(heights.row(y - 1) + 1, heights.row(y) + 1, heights.row(y + 1) + 1, mWidth - 2, light, band,
                       mShadow.data() + start, mHighlight.data() + start);
    }
}

bool ReliefMaps::blur(int radius, int frame) {
    const GaussBell bell = makeGaussBell(radius, kSoftPeak);
    Scratch<uint8_t> scratch(gaussScratchBytes(bell, mWidth, mHeight));
    if (!scratch) return false;
    blurMap(mShadow, bell, frame, scratch.data());
    blurMap(mHighlight, bell, frame, scratch.data());
    return true;
}

void ReliefMaps::blurMap(Scratch<uint8_t>& map, const GaussBell& bell, int frame, uint8_t* scratch) {
    std::memcpy(mSpare.data(), map.data(), map.count());
    std::memset(map.data(), 0, map.count());
    gaussBlurPlane8({mSpare.data(), mWidth, mHeight, mWidth}, bell, {frame, mWidth - frame, frame, mHeight - frame},
                    scratch, {map.data(), mWidth, mHeight, mWidth});
}

}  // namespace QxFontEffect
