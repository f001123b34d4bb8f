#include "pixel/kernel/blend.h"

namespace QxFontEffect::kernel {
namespace {

struct Rgba {
    int r, g, b, a;
};

Rgba fromColor(uint32_t color) {
    return {static_cast<int>(color >> 16 & 255), static_cast<int>(color >> 8 & 255), static_cast<int>(color & 255),
            static_cast<int>(color >> 24)};
}

Rgba load(const uint8_t* p) {
    return {p[0], p[1], p[2], p[3]};
}
Rgba loadBgra(const uint8_t* p) {
    return {p[2], p[1], p[0], p[3]};
}

uint8_t limited(int value) {
    return static_cast<uint8_t>(value > 255 ? 255 : value);
}

void store(uint8_t* p, const Rgba& v) {
    p[0] = limited(v.r);
    p[1] = limited(v.g);
    p[2] = limited(v.b);
    p[3] = limited(v.a);
}

int scale(int biased, int factor) {
    return ((biased + 1) * factor) >> 8;
}

Rgba scale(const Rgba& biased, int factor) {
    return {scale(biased.r, factor), scale(biased.g, factor), scale(biased.b, factor), scale(biased.a, factor)};
}

Rgba sum(const Rgba& u, const Rgba& v) {
    return {u.r + v.r, u.g + v.g, u.b + v.b, u.a + v.a};
}

Rgba beneath(const Rgba& src, const Rgba& dst) {
    return sum(dst, scale(src, 255 - dst.a));
}
Rgba over(const Rgba& src, const Rgba& dst) {
    return sum(src, scale(dst, 255 - src.a));
}

void blendDstOverPixel32(const Rgba& src, uint8_t* pixel) {
    const Rgba dst = load(pixel);
    if (dst.a == 255 || src.a == 0) return;
    store(pixel, dst.a == 0 ? src : beneath(src, dst));
}

}  // namespace

void blendSrcOverRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count) {
    const Rgba c = fromColor(color);
    for (ptrdiff_t i = 0; i < count; ++i) {
        const Rgba src = scale(c, mask[i]);
        if (src.a != 0) store(dst + 4 * i, over(src, load(dst + 4 * i)));
    }
}

void blendDstOverRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count) {
    const Rgba c = fromColor(color);
    for (ptrdiff_t i = 0; i < count; ++i) {
        const Rgba old = load(dst + 4 * i);
        if (old.a == 255 || mask[i] == 0) continue;
        const Rgba src = scale(c, mask[i]);
        store(dst + 4 * i, old.a == 0 ? src : beneath(src, old));
    }
}

void blendDstOverNsaRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count) {
    const Rgba c = fromColor(color);
    for (ptrdiff_t i = 0; i < count; ++i) {
        const Rgba old = load(dst + 4 * i);
        if (old.a == 255 || mask[i] == 0) continue;
        store(dst + 4 * i, old.a == 0 ? c : beneath(c, old));
    }
}

void blendDstOverSaRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count) {
    const Rgba c = fromColor(color);
    for (ptrdiff_t i = 0; i < count; ++i) {
        const int m = mask[i];
        if (m == 0) continue;
        const Rgba old = load(dst + 4 * i);
        const Rgba src = scale(c, m);
        if (old.a == 0) {
            store(dst + 4 * i, src);
        } else if (m == 255) {
            store(dst + 4 * i, beneath(src, old));  // scaling by 255 leaves the colour's channels as they are
        } else {
            store(dst + 4 * i, scale(beneath(src, old), m));
        }
    }
}

void drawRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count) {
    const Rgba c = fromColor(color);
    for (ptrdiff_t i = 0; i < count; ++i) store(dst + 4 * i, {c.r, c.g, c.b, scale(c.a, mask[i])});
}

void drawRow8To8(const uint8_t* mask, uint8_t* dst, ptrdiff_t count) {
    for (ptrdiff_t i = 0; i < count; ++i) dst[i] = mask[i] > dst[i] ? mask[i] : dst[i];
}

void blendDstOverRow32(const uint8_t* bgra, uint8_t* dst, ptrdiff_t count) {
    for (ptrdiff_t i = 0; i < count; ++i) blendDstOverPixel32(loadBgra(bgra + 4 * i), dst + 4 * i);
}

void blendDstOverRow32Rgba(const uint8_t* rgba, uint8_t* dst, ptrdiff_t count) {
    for (ptrdiff_t i = 0; i < count; ++i) blendDstOverPixel32(load(rgba + 4 * i), dst + 4 * i);
}

void blendSrcOverRow32(const uint8_t* bgra, uint8_t* dst, ptrdiff_t count) {
    for (ptrdiff_t i = 0; i < count; ++i) {
        const Rgba src = loadBgra(bgra + 4 * i);
        store(dst + 4 * i, over(src, load(dst + 4 * i)));
    }
}

}  // namespace QxFontEffect::kernel
