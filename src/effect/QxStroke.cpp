#include "effect/QxStroke.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/disc_dilate.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kCentered = 0;
constexpr int kOutside = 1;

struct Free {
    void operator()(unsigned char* buffer) const { std::free(buffer); }
};
using Kernel = std::unique_ptr<unsigned char, Free>;

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

}  // namespace

int makeCircleKernel(unsigned char** kernel, float radius) {
    *kernel = nullptr;
    const int reach = discReach(radius);
    // The largest disc whose cells an int can count.
    constexpr int kMaxReach = 23169;
    if (reach < 0 || reach > kMaxReach) return 0;
    const int side = 2 * reach + 1;
    *kernel = static_cast<unsigned char*>(std::malloc(static_cast<size_t>(side) * static_cast<size_t>(side)));
    if (*kernel == nullptr) return 0;
    for (int row = -reach; row <= reach; ++row) discRow(radius, reach, row, *kernel + ptrdiff_t{row + reach} * side);
    return side;
}

int partalDTStrokeCenter(void* work) {
    const StrokeWork& slice = *static_cast<const StrokeWork*>(work);
    dilate(slice, false, slice.dst);
    dilate(slice, true, slice.dst + slice.planeOffset);
    return 0;
}

int partalDTStrokeOutside(void* work) {
    const StrokeWork& slice = *static_cast<const StrokeWork*>(work);
    dilate(slice, false, slice.dst);
    return 0;
}

int partalDTStrokeInside(void* work) {
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

    unsigned char* cells = nullptr;
    const float radius = centered ? property->size * 0.5f : property->size;
    const int side = makeCircleKernel(&cells, radius);
    const Kernel kernel(cells);
    if (!kernel) return;

    const QxRect& ink = *p->textRect;
    if (ink.right < ink.left || ink.bottom < ink.top) return;
    const int half = side >> 1;
    const int64_t srcWidth = int64_t{ink.right} - ink.left + 2, srcHeight = int64_t{ink.bottom} - ink.top + 2;
    const int64_t width = srcWidth + 2 * int64_t{half}, height = srcHeight + 2 * int64_t{half};
    if (width > INT32_MAX || height > INT32_MAX || width > INT32_MAX / height) return;

    Scratch<uint8_t> padded = Scratch<uint8_t>::zeroed(srcWidth, srcHeight);
    Scratch<uint8_t> planes = Scratch<uint8_t>::zeroed(width, centered ? 2 * height : height);
    if (!padded || !planes) return;
    const int32_t w = static_cast<int32_t>(width), h = static_cast<int32_t>(height);
    const int32_t sw = static_cast<int32_t>(srcWidth), sh = static_cast<int32_t>(srcHeight);
    const QxRect covered = inkRect(*p);
    for (int row = covered.top; row < covered.bottom; ++row)
        std::copy_n(coverageOf(*p->srcBitmap).row(row) + covered.left, covered.right - covered.left,
                    padded.data() + ptrdiff_t{row - ink.top + 1} * sw + covered.left - ink.left + 1);

    StrokeWork work{planes.data(), padded.data(), kernel.get(),       sw,   sh, 0,  0, w, h, half,
                    half,          w * h,         truncToInt(radius), side, sw, sh, 0, sh};
    if (centered) {
        partalDTStrokeCenter(&work);
        for (int64_t i = 0; i < width * height; ++i)
            planes[i] = std::min(planes[i], planes[i + static_cast<size_t>(width * height)]);
    } else if (property->position == kOutside) {
        partalDTStrokeOutside(&work);
    } else {
        partalDTStrokeInside(&work);
    }

    const int mode = centered && p->layerMode != 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    const int x = ink.left - 1 - half, y = ink.top - 1 - half;
    QxBlender::drawBitmapBlend8(x, y, p->dstBitmap, planes.data(), w, h, w, property->color, mode);
    if (p->baseBitmap != nullptr)
        QxBlender::drawBitmapBlend8(x, y, p->baseBitmap, planes.data(), w, h, w, property->color, mode);
}

int QxStroke::getOffset() {
    if (property == nullptr) return 0;
    if (property->position == kOutside) return truncToInt(property->size + 0.5f);
    if (property->position == kCentered) return truncToInt(property->size * 0.5f + 0.5f);
    return 0;
}

}  // namespace QxFontEffect
