#pragma once

#include "pixel/kernel/lanes.h"

/// The blender's arithmetic without branches. What is a case of its own in the formulas is one of three things here:
///
///  - the same formula after all: a full mask or an opaque source leaves a factor of 0 for the destination, an opaque
///    destination one of 0 for the source, and ((c + 1) * 255) >> 8 is c;
///  - a choice by mask: a pixel that stays is cleared in the sum and kept in the destination;
///  - an empty destination (alpha 0), which takes the source as it is: ((s + 1) * 255) >> 8 is s, and what colour the
///    pixel has without alpha is cleared.
namespace QxFontEffect::kernel {
namespace {

/// A colour in every pixel.
inline Channels channelsOf(uint32_t color) {
    return swapRedBlue(split(Words{} + color));
}

/// What of a destination is free for what comes beneath it.
struct Beneath {
    explicit Beneath(Words pixels) {
        const Halves alpha = highAlphaOf(pixels);
        empty = isZero(alpha);
        highRoom = 0xFF00 - alpha;
    }
    Words add(Channels src) const { return join(scaled(src + 1, highRoom)); }

    Halves empty;     ///< all bits where alpha is 0
    Halves highRoom;  ///< 255 - alpha in the high bytes
};

// `operator()` takes the pixels of a destination and their mask, in the byte that `mask` says.

struct SrcOver {
    static constexpr MaskByte mask = MaskByte::High;
    Channels color;
    Halves alpha;

    explicit SrcOver(uint32_t c) : color(channelsOf(c) + 1), alpha(everywhere((c >> 24) + 1)) {}
    Words operator()(Words dst, Halves highMask) const {
        const Halves a = scaled(alpha, highMask);
        // A colour without alpha is drawn not at all, even where its channels are not 0.
        const Words src = join(scaled(color, highMask)) & ~words(isZero(a));
        return addLimited(src, join(scaled(split(dst) + 1, (255 - a) << 8)));
    }
};

struct DstOver {
    static constexpr MaskByte mask = MaskByte::High;
    Channels color;

    explicit DstOver(uint32_t c) : color(channelsOf(c) + 1) {}
    Words operator()(Words dst, Halves highMask) const {
        const Beneath under(dst);
        return addLimited(dst & ~words(under.empty & ~isZero(highMask)), under.add(scaled(color, highMask)));
    }
    /// The same where the destination is all zero.
    Words onNothing(Halves highMask) const { return join(scaled(color, highMask)); }
};

struct DstOverNsa {
    static constexpr MaskByte mask = MaskByte::High;
    Channels color;

    explicit DstOverNsa(uint32_t c) : color(channelsOf(c)) {}
    Words operator()(Words dst, Halves highMask) const {
        const Beneath under(dst);
        const Halves out = isZero(highMask);
        return addLimited(dst & ~words(under.empty & ~out), under.add(color) & ~words(out));
    }
    Words onNothing(Halves highMask) const { return join(color) & ~words(isZero(highMask)); }
};

/// (c * factor) >> 8 as pixels, limited to 255, for lanes up to 511 and factors up to 256.
inline Words scaleLimited(Channels c, Halves factor) {
    // A lane is 256 * high + low and high is 0 or 1: the products are (low * factor) >> 8 and factor.
    const Channels high = {isAbove255(c.even) & factor, isAbove255(c.odd) & factor};
    const Channels low = {c.even & 255, c.odd & 255};
    return addLimited(join(high), joinHigh(low * factor));
}

struct DstOverSa {
    static constexpr MaskByte mask = MaskByte::Low;
    Channels color;

    explicit DstOverSa(uint32_t c) : color(channelsOf(c) + 1) {}
    Words operator()(Words dst, Halves lowMask) const {
        const Beneath under(dst);
        const Channels src = scaled((color * lowMask >> 8) + 1, under.highRoom);
        const Channels sum = split(dst & ~words(under.empty)) + src + (under.empty + 1);
        // An empty pixel is not scaled a second time.
        const Halves factor = (lowMask & ~under.empty) | (under.empty & 256);
        const Words stays = words(isZero(lowMask));
        return (scaleLimited(sum, factor) & ~stays) | (dst & stays);
    }
};

struct Draw {
    static constexpr MaskByte mask = MaskByte::Low;
    Words rgb;
    Halves alpha;

    explicit Draw(uint32_t c) : rgb(swapRedBlue(Words{} + (c & 0xFFFFFF))), alpha(everywhere((c >> 24) + 1)) {}
    Words operator()(Words, Halves lowMask) const { return rgb | (words(alpha * lowMask) & 0xFF000000u); }
};

inline Words dstOver(Words dst, Channels src) {
    const Beneath under(dst);
    const Halves out = isZero(alphaOf(src));
    return addLimited(dst & ~words(under.empty & ~out), under.add(src) & ~words(out));
}

inline Words srcOver(Words dst, Words src) {
    return addLimited(src, join(scaled(split(dst) + 1, 0xFF00 - highAlphaOf(src))));
}

}  // namespace
}  // namespace QxFontEffect::kernel
