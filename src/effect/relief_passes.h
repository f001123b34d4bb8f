#pragma once

#include <cstdint>
#include <optional>

#include "base/Scratch.h"
#include "effect/QxReliefProperty.h"
#include "effect/heights.h"
#include "effect/kernel/distance.h"
#include "effect/kernel/gauss_rows.h"
#include "effect/kernel/relief_kernels.h"
#include "effect/outline_index.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxRect.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// What the bevel and the emboss share: the light, the two maps with their blurs, the colours, and the area they work
/// on. A relief is worked out from its height field row by row; only maps that are blurred are kept whole.

/// Pixels of a working area above which a relief is not drawn. Far beyond any picture; it keeps an absurd size from
/// taking all of the machine's memory before it fails.
constexpr int64_t kMaxReliefPixels = int64_t{1} << 27;

/// What a smooth relief's maps are multiplied by: blurring thins them out.
constexpr float kSmoothGain = 1.83f;

/// Whether every setting that enters the geometry or the light is a finite number.
bool hasFiniteSettings(const QxReliefProperty& property);

/// The light of a record. Angle 0 is the right and 90 the top. Direction 0 has the light there, so that the shape looks
/// raised; any other direction has it opposite, so that the shape looks sunken.
ReliefLight reliefLight(const QxReliefProperty& property);

/// A blur of both maps. Pixels closer than `frame` to the area's edges become 0, and the horizontal pass sees nothing
/// of the columns there.
struct ReliefBlur {
    int radius;
    int frame;
};

/// A relief's area, and the parts of it that are worked out and shown, in pixels of the area.
struct ReliefArea {
    int32_t x, y;  ///< of the area in the bitmaps
    int32_t width, height;
    MapRegion shown;   ///< by a bitmap
    MapRegion worked;  ///< what the shown part depends on
    ReliefBlur blurs[2];
    int blurCount;

    /// Works out everything, for height fields that cannot be cut.
    void workAll() { worked = {0, 0, width, height}; }
};

/// The text rectangle grown by `margin` on every side. False where nothing of it is shown, or where it is inverted,
/// beyond any bitmap or larger than kMaxReliefPixels in what has to be worked out.
///
/// @param columns, rows  of the largest bitmap that is painted into.
bool reliefArea(const QxRect& rect, int64_t margin, const ReliefBlur* blurs, int blurCount, int64_t columns,
                int64_t rows, ReliefArea& area);

/// Whether maps of a region are within kMaxReliefPixels.
bool fitsMemory(const MapRegion& region);

/// The part of the coverage within `rect`, as it lies on the worked part of the area; empty where they do not meet.
PlacedInk inkOn(const ReliefArea& area, ConstPlane8 coverage, const QxRect& rect);

/// Both maps of a part of the area.
struct ReliefMaps {
    /// @param rows  to have memory for, 0 for none at all; the region says where they lie.
    ReliefMaps(const MapRegion& part, int rows);

    explicit operator bool() const { return shadow && highlight; }
    uint8_t* shadowRow(int y) { return shadow.data() + (y - region.top) * stride; }
    uint8_t* highlightRow(int y) { return highlight.data() + (y - region.top) * stride; }

    MapRegion region;
    ptrdiff_t stride;
    Scratch<uint8_t> shadow, highlight;
};

/// One blur of both maps, a strip of rows at a time.
class ReliefMapBlur {
public:
    /// @param from    used while the object lives.
    /// @param wanted  part of the area.
    ReliefMapBlur(const ReliefArea& area, const ReliefBlur& blur, const ReliefMaps& from, const MapRegion& wanted);

    explicit operator bool() const { return mShadowScratch && mHighlightScratch; }

    /// What is wanted, less the frame.
    const MapRegion& out() const { return mOut; }

    /// Once the maps are filled.
    void begin();

    /// Writes the next rows of the part, at most kGaussRows of them, and returns their number: 0 at the end.
    int next(uint8_t* shadow, uint8_t* highlight, ptrdiff_t stride);

private:
    GaussJob jobOn(const Scratch<uint8_t>& map, const ReliefMaps& from, const MapRegion& seen) const;

    GaussBell mBell;
    MapRegion mOut;
    GaussJob mShadowJob, mHighlightJob;
    Scratch<uint8_t> mShadowScratch, mHighlightScratch;
    std::optional<GaussRows> mShadow, mHighlight;
};

/// Lights a height field row by row, and blurs and colours what it gives.
class ReliefPainter {
public:
    /// @param area  used while the object lives.
    ReliefPainter(const ReliefArea& area, const ReliefLight& light, const ReliefBand& band, const ReliefColors& colors,
                  const ReliefKernels& kernels = reliefKernels());

    /// False when memory cannot be had.
    explicit operator bool() const;

    /// @param heights  of the area's worked part.
    /// @param paint    void(int x, int y, int count, uint32_t* pixels): premultiplied pixels of one row, from column x
    ///                 of the area on, which it may change.
    template <typename Paint>
    void paint(HeightRows& heights, Paint paint) {
        begin(heights);
        for (int y = mOut.top; y < mOut.bottom; ++y)
            if (colorRow(y)) paint(mOut.left, y, mOut.width(), mPixels.data());
    }

private:
    void begin(HeightRows& heights);
    void lightRow(int y, uint8_t* shadow, uint8_t* highlight);
    float* heightsOf(int y);
    bool colorRow(int y);

    const ReliefArea& mArea;
    ReliefLight mLight;
    ReliefBand mBand;
    ReliefColors mColors;
    const ReliefKernels& mKernels;
    FlatLight mFlat;
    HeightRows* mHeights = nullptr;
    int mTaken = 0;  // rows of the height field
    ReliefMaps mLit;
    ReliefMaps mSoft;  // after the first of two blurs
    std::optional<ReliefMapBlur> mFirst, mLast;
    MapRegion mOut;  // what is painted
    ReliefMaps mStrip;
    int mStripRows = 0;  // in the strip, from its region's top on
    ptrdiff_t mHeightStride;
    Scratch<float> mHeightRing;
    Scratch<uint32_t> mPixels;
};

}  // namespace QxFontEffect
