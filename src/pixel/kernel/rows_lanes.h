#pragma once

#include "pixel/kernel/blend_lanes.h"
#include "pixel/kernel/layers_lanes.h"
#include "pixel/kernel/rows.h"

/// The row kernels over lanes: each walks its row in blocks of `kBlock` pixels and takes the rest through a block of
/// its own, so that there is one arithmetic for all widths.
namespace QxFontEffect::kernel {
namespace {

/// The last pixels of a row, too few for a block, with zeros behind them.
template <int kBytesPerPixel>
struct LastBlock {
    uint8_t bytes[kBytesPerPixel * kBlock] = {};

    LastBlock(const uint8_t* from, ptrdiff_t count) { std::memcpy(bytes, from, size(count)); }
    void copyTo(uint8_t* to, ptrdiff_t count) const { std::memcpy(to, bytes, size(count)); }
    static size_t size(ptrdiff_t count) { return static_cast<size_t>(kBytesPerPixel * count); }
};

/// `op(dst pixels, mask)` for each vector of a block.
template <typename Op>
inline void eachVector(const uint8_t* mask, const Op& op, uint8_t* dst) {
    Halves spread[kBlock / kVectorPixels];
    spreadMask<Op::mask>(mask, spread);
    for (int i = 0; i < kBlock / kVectorPixels; ++i)
        store(dst + i * kVectorBytes, op(load(dst + i * kVectorBytes), spread[i]));
}

/// A block of the same pixel.
inline void fill(uint8_t* dst, Words pixel) {
    for (int i = 0; i < 4 * kBlock; i += kVectorBytes) store(dst + i, pixel);
}

// A block with nothing to draw, or nothing to draw on, is left untouched: most of a text's mask is empty or full. What
// goes beneath empty pixels is the scaled colour itself.

struct SrcOverBlock {
    SrcOver op;

    explicit SrcOverBlock(uint32_t color) : op(color) {}
    void operator()(const uint8_t* mask, uint8_t* dst) const {
        if (masksAllZero(mask)) return;
#if defined(__AVX2__)
        if (quad(mask) == 0 || quad(mask + 8) == 0) {
            // Half of it is enough; edges and bands are narrow.
            const int at = quad(mask) == 0 ? kVectorBytes : 0;
            store(dst + at, op(load(dst + at), spreadEight<SrcOver::mask>(mask + at / 4)));
            return;
        }
#endif
        eachVector(mask, op, dst);
    }
};

template <typename Op>
struct BeneathBlock {
    Op op;
    Words solid;

    explicit BeneathBlock(uint32_t color) : op(color), solid(op.onNothing(everywhere(0xFF00))) {}
    void operator()(const uint8_t* mask, uint8_t* dst) const {
        if (masksAllZero(mask) || pixelsAllOpaque(dst)) return;
        if (pixelsAllZero(dst))
            masksAllFull(mask) ? fill(dst, solid) : onNothing(mask, dst);
        else
            eachVector(mask, op, dst);
    }

private:
    void onNothing(const uint8_t* mask, uint8_t* dst) const {
        Halves spread[kBlock / kVectorPixels];
        spreadMask<Op::mask>(mask, spread);
        for (int i = 0; i < kBlock / kVectorPixels; ++i) store(dst + i * kVectorBytes, op.onNothing(spread[i]));
    }
};

struct DstOverSaBlock {
    DstOverSa scaled;
    DstOver full;

    explicit DstOverSaBlock(uint32_t color) : scaled(color), full(color) {}
    void operator()(const uint8_t* mask, uint8_t* dst) const {
        if (masksAllZero(mask)) return;
        // Neither scaling by 255 nor drawing on empty pixels differs from plain destination-over.
        if (masksAllFull(mask) || pixelsAllZero(dst))
            eachVector(mask, full, dst);
        else
            eachVector(mask, scaled, dst);
    }
};

struct DrawBlock {
    Draw op;

    explicit DrawBlock(uint32_t color) : op(color) {}
    void operator()(const uint8_t* mask, uint8_t* dst) const { eachVector(mask, op, dst); }
};

template <typename Block>
void maskRow(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count) {
    const Block block(color);
    for (; count >= kBlock; count -= kBlock, mask += kBlock, dst += 4 * kBlock) block(mask, dst);
    if (count <= 0) return;
    const LastBlock<1> lastMask(mask, count);
    LastBlock<4> last(dst, count);
    block(lastMask.bytes, last.bytes);
    last.copyTo(dst, count);
}

inline void maximumBlock(const uint8_t* src, uint8_t* dst) {
    using Sixteen = uint8_t __attribute__((vector_size(kBlock)));
    Sixteen a, b;
    std::memcpy(&a, src, sizeof a);
    std::memcpy(&b, dst, sizeof b);
    const Sixteen larger = a > b ? a : b;
    std::memcpy(dst, &larger, sizeof larger);
}

void maximumRow(const uint8_t* src, uint8_t* dst, ptrdiff_t count) {
    for (; count >= kBlock; count -= kBlock, src += kBlock, dst += kBlock) maximumBlock(src, dst);
    for (; count > 0; --count, ++src, ++dst) *dst = *src > *dst ? *src : *dst;
}

/// Asks for the picture that is blended, which is read once and whole, before it is needed. Processors do so by
/// themselves, but begin anew at each page. What lies behind the picture may be asked for too.
inline void fetchAhead(const uint8_t* src) {
    constexpr uintptr_t kAhead = 2048;
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(src) + kAhead));
}

/// `Op::block(src, dst)` over a row.
template <typename Op>
void pixelRow(const uint8_t* src, uint8_t* dst, ptrdiff_t count) {
    for (; count >= kBlock; count -= kBlock, src += 4 * kBlock, dst += 4 * kBlock) {
        fetchAhead(src);
        Op::block(src, dst);
    }
    if (count <= 0) return;
    const LastBlock<4> lastSrc(src, count);
    LastBlock<4> last(dst, count);
    Op::block(lastSrc.bytes, last.bytes);
    last.copyTo(dst, count);
}

template <bool kRedFirst>
struct DstOver32 {
    static void block(const uint8_t* src, uint8_t* dst) {
        if (pixelsAllZero(src) || pixelsAllOpaque(dst)) return;
        for (int i = 0; i < 4 * kBlock; i += kVectorBytes) {
            const Channels channels = split(load(src + i));
            store(dst + i, dstOver(load(dst + i), kRedFirst ? channels : swapRedBlue(channels)));
        }
    }
};

struct SrcOver32 {
    static void block(const uint8_t* src, uint8_t* dst) {
        if (pixelsAllZero(src)) return;
        if (pixelsAllOpaque(src)) {
            for (int i = 0; i < 4 * kBlock; i += kVectorBytes) store(dst + i, swapRedBlue(load(src + i)));
            return;
        }
        for (int i = 0; i < 4 * kBlock; i += kVectorBytes)
            store(dst + i, srcOver(load(dst + i), swapRedBlue(load(src + i))));
    }
};

void swapRow(uint8_t* pixels, ptrdiff_t count) {
    for (; count >= kVectorPixels; count -= kVectorPixels, pixels += kVectorBytes)
        store(pixels, swapRedBlue(load(pixels)));
    for (; count > 0; --count, pixels += 4) {
        const uint8_t first = pixels[0];
        pixels[0] = pixels[2];
        pixels[2] = first;
    }
}

inline void compositeBlock(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture) {
    if (masksAllFull(coverage)) return;
    if (masksAllZero(coverage)) {
        std::memcpy(picture, layer, 4 * kBlock);
        return;
    }
    Halves spread[kBlock / kVectorPixels];
    spreadMask<MaskByte::High>(coverage, spread);
    for (int i = 0; i < kBlock / kVectorPixels; ++i) {
        const ptrdiff_t at = i * kVectorBytes;
        store(picture + at, composite(load(layer + at), load(picture + at), spread[i]));
    }
}

void compositeRow(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, ptrdiff_t count) {
    for (; count >= kBlock; count -= kBlock, layer += 4 * kBlock, coverage += kBlock, picture += 4 * kBlock)
        compositeBlock(layer, coverage, picture);
    if (count <= 0) return;
    const LastBlock<4> lastLayer(layer, count);
    const LastBlock<1> lastCoverage(coverage, count);
    LastBlock<4> last(picture, count);
    compositeBlock(lastLayer.bytes, lastCoverage.bytes, last.bytes);
    last.copyTo(picture, count);
}

inline void unpremultiplyBlock(Words textAlpha, bool opaqueText, uint8_t* block) {
    // Most of a picture is blank or opaque and stays so: nothing to divide.
    if (pixelsAllZero(block) || (opaqueText && pixelsAllOpaque(block))) return;
    for (int i = 0; i < kBlock / kVectorPixels; ++i)
        store(block + i * kVectorBytes, unpremultiplied(load(block + i * kVectorBytes), textAlpha));
}

void unpremultiplyRow(int textAlpha, uint8_t* picture, ptrdiff_t count) {
    const Words t = Words{} + static_cast<uint32_t>(textAlpha);
    const bool opaqueText = textAlpha == 255;
    for (; count >= kBlock; count -= kBlock, picture += 4 * kBlock) unpremultiplyBlock(t, opaqueText, picture);
    if (count <= 0) return;
    LastBlock<4> last(picture, count);
    unpremultiplyBlock(t, opaqueText, last.bytes);
    last.copyTo(picture, count);
}

constexpr PixelRows rowsNamed(const char* name) noexcept {
    return {name,
            maskRow<SrcOverBlock>,
            maskRow<BeneathBlock<DstOver>>,
            maskRow<BeneathBlock<DstOverNsa>>,
            maskRow<DstOverSaBlock>,
            maskRow<DrawBlock>,
            maximumRow,
            pixelRow<DstOver32<false>>,
            pixelRow<DstOver32<true>>,
            pixelRow<SrcOver32>,
            swapRow,
            compositeRow,
            unpremultiplyRow};
}

}  // namespace
}  // namespace QxFontEffect::kernel
