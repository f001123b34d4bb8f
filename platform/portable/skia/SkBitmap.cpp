#include "SkBitmap.h"

namespace {

bool countable(const SkImageInfo& info, size_t rowBytes) {
    if (info.width() < 0 || info.height() < 0 || info.bytesPerPixel() == 0) return false;
    const size_t row = static_cast<size_t>(info.width()) * static_cast<size_t>(info.bytesPerPixel());
    if (rowBytes < row) return false;
    const size_t rows = static_cast<size_t>(info.height());
    return rows == 0 || rowBytes <= PTRDIFF_MAX / rows;
}

}  // namespace

bool SkBitmap::installPixels(const SkImageInfo& info, void* pixels, size_t rowBytes) {
    if (!countable(info, rowBytes)) {
        *this = SkBitmap();
        return false;
    }
    mInfo = info;
    mPixels = pixels;
    mRowBytes = rowBytes;
    return true;
}
