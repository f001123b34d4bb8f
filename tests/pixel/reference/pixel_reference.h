#pragma once

#include <algorithm>
#include <cstdint>

/// One pixel at a time, in the plainest form: what the row kernels must equal byte for byte. Nothing here is shared
/// with them and nothing here is ever tuned.
namespace QxFontEffect::test::reference {

struct Color {
    int r, g, b, a;
};

inline Color unpack(uint32_t v) {
    return {static_cast<int>((v >> 16) & 0xFF), static_cast<int>((v >> 8) & 0xFF), static_cast<int>(v & 0xFF),
            static_cast<int>((v >> 24) & 0xFF)};
}

inline void put(uint8_t* d, int r, int g, int b, int a) {
    const int v[4] = {r, g, b, a};
    for (int k = 0; k < 4; ++k) d[k] = static_cast<uint8_t>(std::min(v[k], 255));
}

inline void srcOver8To32(uint8_t m, uint32_t color, uint8_t* d) {
    const Color c = unpack(color);
    const int a = ((c.a + 1) * m) >> 8;
    if (a == 0) return;
    if (a == 255) return put(d, c.r, c.g, c.b, 255);
    const int i = 255 - a;
    put(d, (((d[0] + 1) * i) >> 8) + (((c.r + 1) * m) >> 8), (((d[1] + 1) * i) >> 8) + (((c.g + 1) * m) >> 8),
        (((d[2] + 1) * i) >> 8) + (((c.b + 1) * m) >> 8), a + (((d[3] + 1) * i) >> 8));
}

inline void dstOver8To32(uint8_t m, uint32_t color, uint8_t* d) {
    const Color c = unpack(color);
    if (d[3] == 255 || m == 0) return;
    if (d[3] == 0)
        return put(d, ((c.r + 1) * m) >> 8, ((c.g + 1) * m) >> 8, ((c.b + 1) * m) >> 8, ((c.a + 1) * m) >> 8);
    const int i = 255 - d[3];
    put(d, d[0] + ((((((c.r + 1) * m) >> 8) + 1) * i) >> 8), d[1] + ((((((c.g + 1) * m) >> 8) + 1) * i) >> 8),
        d[2] + ((((((c.b + 1) * m) >> 8) + 1) * i) >> 8), d[3] + ((i * ((((c.a + 1) * m) >> 8) + 1)) >> 8));
}

inline void dstOverNsa8To32(uint8_t m, uint32_t color, uint8_t* d) {
    const Color c = unpack(color);
    if (d[3] == 255 || m == 0) return;
    if (d[3] == 0) return put(d, c.r, c.g, c.b, c.a);
    const int i = 255 - d[3];
    put(d, d[0] + (((c.r + 1) * i) >> 8), d[1] + (((c.g + 1) * i) >> 8), d[2] + (((c.b + 1) * i) >> 8),
        (((c.a + 1) * i) >> 8) + d[3]);
}

inline void dstOverSa8To32(uint8_t m, uint32_t color, uint8_t* d) {
    const Color c = unpack(color);
    if (m == 0) return;
    const int sa = ((c.a + 1) * m) >> 8;
    const int i = 255 - d[3];
    if (d[3] == 0) {
        put(d, ((c.r + 1) * m) >> 8, ((c.g + 1) * m) >> 8, ((c.b + 1) * m) >> 8, sa);
    } else if (m == 255) {
        put(d, d[0] + (((c.r + 1) * i) >> 8), d[1] + (((c.g + 1) * i) >> 8), d[2] + (((c.b + 1) * i) >> 8),
            d[3] + (((sa + 1) * i) >> 8));
    } else if (d[3] == 255) {
        put(d, ((d[0] + 1) * m) >> 8, ((d[1] + 1) * m) >> 8, ((d[2] + 1) * m) >> 8, m);
    } else {
        put(d, ((d[0] + ((((((c.r + 1) * m) >> 8) + 1) * i) >> 8) + 1) * m) >> 8,
            ((d[1] + ((((((c.g + 1) * m) >> 8) + 1) * i) >> 8) + 1) * m) >> 8,
            ((d[2] + ((((((c.b + 1) * m) >> 8) + 1) * i) >> 8) + 1) * m) >> 8,
            ((d[3] + (((sa + 1) * i) >> 8) + 1) * m) >> 8);
    }
}

inline void draw8To32(uint8_t m, uint32_t color, uint8_t* d) {
    const Color c = unpack(color);
    put(d, c.r, c.g, c.b, ((c.a + 1) * m) >> 8);
}

/// A 32-bit colour value as it lies in memory.
inline Color unpackBytes(const uint8_t* p) {
    return {p[2], p[1], p[0], p[3]};
}

inline void dstOver32To32(const uint8_t* source, uint8_t* d) {
    const Color s = unpackBytes(source);
    if (d[3] == 255 || s.a == 0) return;
    if (d[3] == 0) return put(d, s.r, s.g, s.b, s.a);
    const int i = 255 - d[3];
    put(d, d[0] + (((s.r + 1) * i) >> 8), d[1] + (((s.g + 1) * i) >> 8), d[2] + (((s.b + 1) * i) >> 8),
        d[3] + ((i * (s.a + 1)) >> 8));
}

inline void dstOver32To32Rgba(const uint8_t* source, uint8_t* d) {
    const uint8_t bgra[4] = {source[2], source[1], source[0], source[3]};
    dstOver32To32(bgra, d);
}

inline void srcOver32To32(const uint8_t* source, uint8_t* d) {
    const Color s = unpackBytes(source);
    if (s.a == 255) return put(d, s.r, s.g, s.b, 255);
    const int i = 255 - s.a;
    put(d, s.r + (((d[0] + 1) * i) >> 8), s.g + (((d[1] + 1) * i) >> 8), s.b + (((d[2] + 1) * i) >> 8),
        s.a + (((d[3] + 1) * i) >> 8));
}

inline void compositeLayer(const uint8_t* layer, uint8_t c, uint8_t* output) {
    for (int k = 0; k < 4; ++k) {
        const int value = (((layer[k] + 1) * (255 - c)) >> 8) + (((output[k] + 1) * c) >> 8);
        output[k] = static_cast<uint8_t>(std::min(value, 255));
    }
}

inline void unpremultiply(int t, uint8_t* d) {
    const int a = ((d[3] + 1) * t) >> 8;
    for (int k = 0; k < 3; ++k)
        d[k] = static_cast<uint8_t>(a == 0 ? 0 : std::min((((d[k] + 1) * t) & 0xFF00) / a, 255));
    d[3] = static_cast<uint8_t>(a);
}

}  // namespace QxFontEffect::test::reference
