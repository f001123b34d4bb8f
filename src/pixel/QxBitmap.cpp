#include "pixel/QxBitmap.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "pixel/kernel/clip.h"

namespace QxFontEffect {
namespace {

constexpr uint32_t kFormatColor = 1;
constexpr uint32_t kFormatOther = 2;
constexpr uint32_t kFormatEmpty = 4;

uint32_t formatOf(uint32_t bytesPerPixel) {
    return bytesPerPixel == 4 ? kFormatColor : kFormatOther;
}

/// Every buffer of every bitmap comes from here and goes through `releasePixels`. Null when the size in bytes does
/// not fit 32 bits or memory is short.
uint8_t* allocatePixels(uint32_t width, uint32_t height, uint32_t bytesPerPixel, bool zeroed) {
    const uint64_t count = static_cast<uint64_t>(width) * height;
    if (bytesPerPixel != 0 && count > UINT32_MAX / bytesPerPixel) return nullptr;
    // At least one, since null for none would be no different from a failure.
    const size_t bytes = std::max<size_t>(static_cast<size_t>(count * bytesPerPixel), 1);
    return static_cast<uint8_t*>(zeroed ? std::calloc(bytes, 1) : std::malloc(bytes));
}

void releasePixels(uint8_t* pixels) {
    std::free(pixels);
}

/// Fits 32 bits once pixels exist.
size_t sizeInBytes(const QxBitmap& bitmap) {
    return static_cast<size_t>(bitmap.width) * bitmap.height * bitmap.bytesPerPixel;
}

/// |a - b| in wrapping 32-bit arithmetic.
uint32_t distance(int32_t a, int32_t b) {
    const uint32_t difference = static_cast<uint32_t>(a) - static_cast<uint32_t>(b);
    return difference > INT32_MAX ? 0u - difference : difference;
}

}  // namespace

QxBitmap::QxBitmap() : width(0), height(0), pixels(nullptr), format(kFormatEmpty), bytesPerPixel(0) {}

QxBitmap::QxBitmap(unsigned int w, unsigned int h, unsigned int depth)
    : width(w), height(h), pixels(allocatePixels(w, h, depth, true)), format(formatOf(depth)), bytesPerPixel(depth) {}

QxBitmap::QxBitmap(unsigned int w, unsigned int h, unsigned char* data, unsigned int depth)
    : width(w),
      height(h),
      pixels(allocatePixels(w, h, depth, data == nullptr)),
      format(formatOf(depth)),
      bytesPerPixel(depth) {
    if (pixels != nullptr && data != nullptr) std::memcpy(pixels, data, sizeInBytes(*this));
}

QxBitmap::QxBitmap(const QxBitmap& other)
    : width(other.width),
      height(other.height),
      pixels(nullptr),
      format(other.format),
      bytesPerPixel(other.bytesPerPixel) {
    if (other.pixels == nullptr) return;
    pixels = allocatePixels(width, height, bytesPerPixel, false);
    if (pixels != nullptr) std::memcpy(pixels, other.pixels, sizeInBytes(*this));
}

QxBitmap::QxBitmap(const QxBitmap& source, QxRect* rect)
    : width(0), height(0), pixels(nullptr), format(source.format), bytesPerPixel(source.bytesPerPixel) {
    if (rect == nullptr) return;
    width = distance(rect->left, rect->right);
    height = distance(rect->bottom, rect->top);

    const bool reversed = rect->left >= rect->right || rect->top >= rect->bottom;
    kernel::ClippedBox box = kernel::clipToPlane(-static_cast<int64_t>(rect->left), -static_cast<int64_t>(rect->top),
                                                 source.width, source.height, width, height);
    if (reversed || source.pixels == nullptr || source.bytesPerPixel == 0 || box.empty()) box.width = box.height = 0;

    const bool filled = bytesPerPixel == 1 && box.width == width && box.height == height;
    pixels = allocatePixels(width, height, bytesPerPixel, !filled);
    if (pixels == nullptr) return;
    for (int64_t row = 0; row < box.height; ++row) {
        const uint8_t* from = source.pixels + (box.srcY + row) * source.width + box.srcX;
        std::memcpy(pixels + (box.dstY + row) * width + box.dstX, from, static_cast<size_t>(box.width));
    }
}

QxBitmap& QxBitmap::operator=(const QxBitmap& other) {
    if (this == &other) return *this;
    width = other.width;
    height = other.height;
    format = other.format;
    bytesPerPixel = other.bytesPerPixel;
    // The old buffer goes before the new one is asked for: the two never exist at once.
    releasePixels(pixels);
    pixels = nullptr;
    if (other.pixels == nullptr) return *this;
    pixels = allocatePixels(width, height, bytesPerPixel, false);
    if (pixels != nullptr) std::memcpy(pixels, other.pixels, sizeInBytes(*this));
    return *this;
}

QxBitmap::~QxBitmap() {
    releasePixels(pixels);
    pixels = nullptr;
}

}  // namespace QxFontEffect
