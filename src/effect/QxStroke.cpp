#include "effect/QxStroke.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/disc_dilation.h"
#include "effect/disc_dilation_small.h"
#include "effect/kernel/disc_dilate.h"
#include "effect/kernel/ink_runs.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kCentered = 0;
constexpr int kOutside = 1;

void spreadValue(const StrokeWork& work, int value, uint8_t* corner) {
    const uint8_t* weight = work.kernel;
    for (int i = 0; i < work.kernelSize; ++i, corner += work.dstStride)
        for (int j = 0; j < work.kernelSize; ++j, ++weight)
            corner[j] = static_cast<uint8_t>(std::max<int>(corner[j], *weight - 255 + value));
}

void dilate(const StrokeWork& work, bool complement, uint8_t* plane) {
    const int half = (work.kernelSize - 1) / 2;
    for (int y = work.firstRow; y < work.endRow; ++y) {
        const uint8_t* src = work.src + ptrdiff_t{work.srcY + y} * work.srcStride + work.srcX;
        uint8_t* dst = plane + ptrdiff_t{work.dstY + y - half} * work.dstStride + work.dstX - half;
        for (int x = 0; x < work.columns; ++x) {
            const int value = complement ? 255 - src[x] : src[x];
            if (value != 0) spreadValue(work, value, dst + x);
        }
    }
}

/// The area that spreads, its place, and the part of the result that a bitmap shows.
struct StrokeBox {
    DilateArea area;
    int64_t x, y;  // of the area in the bitmaps
    DilateRange visible;
};

/// The text rectangle with a blank pixel all around it, so that ink at the rectangle's edge has an outline there too.
/// False where there is none or nothing of the result is visible.
bool strokeBox(const ParamPostProcessing& p, int reach, StrokeBox& box) {
    const QxRect& rect = *p.textRect;
    const int64_t width = int64_t{rect.right} - rect.left + 2, height = int64_t{rect.bottom} - rect.top + 2;
    if (reach < 0 || width < 2 || height < 2 || width > INT32_MAX || height > INT32_MAX) return false;
    box.x = int64_t{rect.left} - 1;
    box.y = int64_t{rect.top} - 1;

    const QxRect ink = inkRect(p);
    const ConstPlane8 coverage = coverageOf(*p.srcBitmap);
    const bool any = ink.left < ink.right && ink.top < ink.bottom;
    const ConstPlane8 inked =
        any ? ConstPlane8{coverage.row(ink.top) + ink.left, ink.right - ink.left, ink.bottom - ink.top, coverage.stride}
            : ConstPlane8{coverage.data, 0, 0, coverage.stride};
    box.area = {inked,
                any ? static_cast<int>(ink.left - box.x) : 0,
                any ? static_cast<int>(ink.top - box.y) : 0,
                static_cast<int>(width),
                static_cast<int>(height),
                false};

    const QxBitmap& base = p.baseBitmap != nullptr ? *p.baseBitmap : *p.dstBitmap;
    const int64_t right = std::max(p.dstBitmap->width, base.width);
    const int64_t bottom = std::max(p.dstBitmap->height, base.height);
    box.visible = {std::max<int64_t>(-reach, -box.x), std::max<int64_t>(-reach, -box.y),
                   std::min(width + reach, right - box.x), std::min(height + reach, bottom - box.y)};
    return box.visible.x0 < box.visible.x1 && box.visible.y0 < box.visible.y1;
}

/// Whether a centred stroke is the outside one. Where no row has ink side by side over more columns than twice the
/// disc's full cells on one side, every inked pixel has a free one within them: what grows into the glyphs is full in
/// all of the area. Around it, the blank pixels at its edge are nearer than any ink, so that it limits nothing there
/// either.
bool reachesThrough(float radius, ConstPlane8 ink) {
    int full = 0;
    while (full < ink.width && discCell(radius, 0, full + 1) == 255) ++full;
    for (int y = 0; y < ink.height; ++y) {
        kernel::InkRun run{0, 0};
        do {
            run = kernel::nextInkRun(ink.row(y), run.end, ink.width);
            if (run.end - run.begin > 2 * int64_t{full}) return false;
        } while (!run.empty());
    }
    return true;
}

/// What the source rows of one dilation may take: all dilations together stay below two bytes a pixel of the result.
int64_t sourceBudget(const StrokeBox& box, bool twice) {
    const int64_t pixels = (box.visible.x1 - box.visible.x0) * (box.visible.y1 - box.visible.y0);
    return twice ? pixels * 3 / 4 : pixels * 3 / 2;
}

/// The stroke's rows by discs of any width: one dilation, or two for the centred stroke.
class StrokeBand {
public:
    StrokeBand(const DiscPlan& plan, DilateArea area, int position)
        : mSpread(plan, complemented(area, position != kCentered && position != kOutside)), mBetween(plan.tileWidth()) {
        if (position == kCentered) mLimited.emplace(plan, complemented(area, true));
    }

    explicit operator bool() const { return mSpread && mBetween && (!mLimited || *mLimited); }

    void start(int64_t x0, int64_t x1, int64_t y0) {
        mSpread.start(x0, x1, y0);
        if (mLimited) mLimited->start(x0, x1, y0);
    }

    DilatedPart nextRow(uint8_t* dst) {
        if (!mLimited) return mSpread.nextRow(nullptr, dst);
        // One grows out of the glyphs, the other into them: the band is what they have in common.
        const DilatedPart outer = mSpread.nextRow(nullptr, mBetween.data());
        const DilatedPart inner = mLimited->nextRow(mBetween.data(), dst);
        return {std::max(outer.begin, inner.begin), std::min(outer.end, inner.end)};
    }

private:
    static DilateArea complemented(DilateArea area, bool complement) {
        area.complement = complement;
        return area;
    }

    DiscDilation mSpread;
    std::optional<DiscDilation> mLimited;
    Scratch<uint8_t> mBetween;
};

SmallSource smallSource(int position) {
    return position == kCentered  ? SmallSource::Both
           : position == kOutside ? SmallSource::Ink
                                  : SmallSource::Complement;
}

/// What is drawn, by whichever dilation.
struct StrokePaint {
    const ParamPostProcessing& p;
    const StrokeBox& box;
    unsigned int color;
    int position;

    template <typename Dilation>
    void draw(Dilation& dilation, int tileWidth) const;
    void blendRow(uint8_t* mask, int count, int64_t x, int64_t y) const;
};

template <typename Dilation>
void StrokePaint::draw(Dilation& dilation, int tileWidth) const {
    Scratch<uint8_t> row(tileWidth);
    if (!dilation || !row) return;
    const DilateRange& visible = box.visible;
    for (int64_t x = visible.x0; x < visible.x1; x += tileWidth) {
        dilation.start(x, std::min(x + tileWidth, visible.x1), visible.y0);
        for (int64_t y = visible.y0; y < visible.y1; ++y) {
            const DilatedPart part = dilation.nextRow(row.data());
            if (part.begin < part.end) blendRow(row.data() + part.begin, part.end - part.begin, x + part.begin, y);
        }
    }
}

/// Blends a row of the result from its column x on.
void StrokePaint::blendRow(uint8_t* mask, int count, int64_t x, int64_t y) const {
    const int mode = position == kCentered && p.layerMode != 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    const int left = static_cast<int>(box.x + x), top = static_cast<int>(box.y + y);
    QxBlender::drawBitmapBlend8(left, top, p.dstBitmap, mask, count, 1, count, color, mode);
    if (p.baseBitmap != nullptr)
        QxBlender::drawBitmapBlend8(left, top, p.baseBitmap, mask, count, 1, count, color, mode);
}

}  // namespace

int makeCircleKernel(unsigned char** kernel, float radius) {
    if (kernel == nullptr) return 0;
    *kernel = nullptr;
    const int reach = discReach(radius);
    // The largest disc whose cells an int can count.
    constexpr int kMaxReach = 23169;
    if (reach < 0 || reach > kMaxReach) return 0;
    const int side = 2 * reach + 1;
    *kernel = static_cast<unsigned char*>(std::malloc(static_cast<size_t>(side) * static_cast<size_t>(side)));
    if (*kernel == nullptr) return 0;
    unsigned char* cell = *kernel;
    for (int row = -reach; row <= reach; ++row)
        for (int column = -reach; column <= reach; ++column) *cell++ = discCell(radius, row, column);
    return side;
}

int partalDTStrokeCenter(void* work) {
    if (work == nullptr) return 0;
    const StrokeWork& slice = *static_cast<const StrokeWork*>(work);
    dilate(slice, false, slice.dst);
    dilate(slice, true, slice.dst + slice.planeOffset);
    return 0;
}

int partalDTStrokeOutside(void* work) {
    if (work == nullptr) return 0;
    const StrokeWork& slice = *static_cast<const StrokeWork*>(work);
    dilate(slice, false, slice.dst);
    return 0;
}

int partalDTStrokeInside(void* work) {
    if (work == nullptr) return 0;
    const StrokeWork& slice = *static_cast<const StrokeWork*>(work);
    dilate(slice, true, slice.dst);
    return 0;
}

QxStroke::QxStroke() : property(nullptr) {
    style = QXE_STROKE;
}

QxStroke::~QxStroke() {
    delete property;
}

void QxStroke::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    const QxStrokeProperty& given = *static_cast<QxStrokeProperty*>(p);
    replaceRecord(property, given.size, given.color, given.opacity, given.mode, given.position);
}

void QxStroke::doPostProcessing(ParamPostProcessing* p) {
    if (!drawable(p, property)) return;
    const bool centered = property->position == kCentered;
    const float radius = centered ? property->size * 0.5f : property->size;

    StrokeBox box = {};
    if (!strokeBox(*p, discReach(radius), box)) return;

    const StrokePaint paint{*p, box, property->color, property->position};
    if (SmallDiscPlan::suits(radius)) {
        const SmallDiscPlan plan(radius, box.area.width, box.area.height, box.visible);
        if (!plan) return;
        SmallDiscDilation band(plan, box.area, smallSource(property->position));
        paint.draw(band, plan.tileWidth());
    } else {
        const int position = centered && reachesThrough(radius, box.area.ink) ? kOutside : property->position;
        const DiscPlan plan(radius, box.area.width, box.area.height, box.visible,
                            sourceBudget(box, position == kCentered));
        if (!plan) return;
        StrokeBand band(plan, box.area, position);
        paint.draw(band, plan.tileWidth());
    }
}

int QxStroke::getOffset() {
    if (property == nullptr) return 0;
    if (property->position == kOutside) return truncToInt(property->size + 0.5f);
    if (property->position == kCentered) return truncToInt(property->size * 0.5f + 0.5f);
    return 0;
}

}  // namespace QxFontEffect
