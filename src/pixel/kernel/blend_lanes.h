#pragma once

#include "pixel/kernel/lanes.h"

/// The blender's arithmetic without branches. What is a case of its own in the formulas is one of three things here:
///
///  - the same formula after all: a full mask or an opaque source leaves a factor of 0 for the destination, an opaque
///    destination one of 0 for the source, and ((c + 1) * 255) >> 8 is c;
///  - a choice by mask: a pixel that stays is cleared in the sum and kept in the destination;
///  - an empty destination (alpha 0), which takes the source as it is: with the bias left out and a factor of 256
///    instead of 255, ((s + 1) * 255) >> 8 turns into (s * 256) >> 8.
namespace QxFontEffect::kernel {
namespace {

/// A colour in every pixel.
inline Channels channelsOf(uint32_t color) {
    return swapRedBlue(split(Words{} + color));
}

/// What of a destination is free for what comes beneath it.
struct Beneath {
    explicit Beneath(Words pixels) {
        const Halves alpha = alphaOf(split(pixels));
        empty = isZero(alpha);
        room = 255 - alpha - empty;
    }
    Words add(Channels src) const { return joinHigh((src + (empty + 1)) * room); }

    Halves empty;  ///< all bits where alpha is 0
    Halves room;   ///< 255 - alpha; 256 where empty
};

struct SrcOver {
    Channels color;
    Halves alpha;

    explicit SrcOver(uint32_t c) : color(channelsOf(c) + 1), alpha(everywhere((c >> 24) + 1)) {}
    Words operator()(Words dst, Halves mask) const {
        const Halves a = alpha * mask >> 8;
        // A colour without alpha is drawn not at all, even where its channels are not 0.
        const Words src = joinHigh(color * mask) & ~words(isZero(a));
        return addLimited(src, joinHigh((split(dst) + 1) * (255 - a)));
    }
};

struct DstOver {
    Channels color;

    explicit DstOver(uint32_t c) : color(channelsOf(c) + 1) {}
    Words operator()(Words dst, Halves mask) const {
        const Beneath under(dst);
        return addLimited(dst & ~words(under.empty & ~isZero(mask)), under.add(color * mask >> 8));
    }
};

struct DstOverNsa {
    Channels color;

    explicit DstOverNsa(uint32_t c) : color(channelsOf(c)) {}
    Words operator()(Words dst, Halves mask) const {
        const Beneath under(dst);
        const Halves out = isZero(mask);
        return addLimited(dst & ~words(under.empty & ~out), under.add(color) & ~words(out));
    }
};

/// (c * factor) >> 8 as pixels, limited to 255, for lanes up to 511 and factors up to 256.
inline Words scaleLimited(Channels c, Halves factor) {
    // A lane is 256 * high + low and high is 0 or 1: the products are (low * factor) >> 8 and factor.
    const Channels high = {isAbove255(c.even) & factor, isAbove255(c.odd) & factor};
    const Channels low = {c.even & 255, c.odd & 255};
    return addLimited(join(high), joinHigh(low * factor));
}

struct DstOverSa {
    Channels color;

    explicit DstOverSa(uint32_t c) : color(channelsOf(c) + 1) {}
    Words operator()(Words dst, Halves mask) const {
        const Beneath under(dst);
        const Halves bias = under.empty + 1;
        const Channels src = ((color * mask >> 8) + bias) * under.room >> 8;
        const Channels sum = split(dst & ~words(under.empty)) + src + bias;
        // An empty pixel is not scaled a second time.
        const Halves factor = (mask & ~under.empty) | (under.empty & 256);
        const Words stays = words(isZero(mask));
        return (scaleLimited(sum, factor) & ~stays) | (dst & stays);
    }
};

struct Draw {
    Words rgb;
    Halves alpha;

    explicit Draw(uint32_t c) : rgb(swapRedBlue(Words{} + (c & 0xFFFFFF))), alpha(everywhere((c >> 24) + 1)) {}
    Words operator()(Words, Halves mask) const { return rgb | (words(alpha * mask) & 0xFF000000u); }
};

inline Words dstOver(Words dst, Channels src) {
    const Beneath under(dst);
    const Halves out = isZero(alphaOf(src));
    return addLimited(dst & ~words(under.empty & ~out), under.add(src) & ~words(out));
}

inline Words srcOver(Words dst, Channels src) {
    const Halves left = 255 - alphaOf(src);
    return addLimited(join(src), joinHigh((split(dst) + 1) * left));
}

}  // namespace
}  // namespace QxFontEffect::kernel
