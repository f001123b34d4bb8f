#include "golden/random_stack.h"

#include <algorithm>

#include "effect/QxECoreBase.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxGlyph.h"

namespace QxFontEffect::test {

namespace {

float within(Rng& rng, float low, float high) {
    return low + (high - low) * rng.unit();
}

/// Mostly whole degrees, some with a fraction, some negative.
float randomAngle(Rng& rng) {
    const auto angle = static_cast<float>(rng.between(-400, 400));
    return rng.oneIn(4) ? angle + rng.unit() : angle;
}

/// Small sizes often, large ones seldom.
float randomSize(Rng& rng) {
    if (rng.oneIn(8)) return within(rng, 0.0f, 130.0f);
    return rng.oneIn(3) ? within(rng, 0.0f, 30.0f) : static_cast<float>(rng.between(0, 12));
}

float randomOpacity(Rng& rng) {
    return rng.oneIn(3) ? 1.0f : within(rng, -0.1f, 1.1f);
}

std::vector<QxGradient> randomStops(Rng& rng) {
    std::vector<QxGradient> stops(static_cast<size_t>(rng.between(0, 5)));
    for (QxGradient& stop : stops) {
        stop.color = rng.next32();
        stop.alpha = randomOpacity(rng);
        stop.position = rng.unit();
    }
    const bool sorted = !rng.oneIn(4);
    if (sorted)
        std::sort(stops.begin(), stops.end(),
                  [](const QxGradient& a, const QxGradient& b) { return a.position < b.position; });
    if (sorted && !stops.empty() && rng.oneIn(2)) stops.back().position = 1.0f;
    return stops;
}

template <typename Add>
void addShadow(Rng& rng, QxEffect& stack, Add add) {
    const float angle = randomAngle(rng);
    const float distance = rng.oneIn(6) ? within(rng, 0, 110) : static_cast<float>(rng.between(0, 20));
    const float size = randomSize(rng);
    const uint32_t color = rng.next32();
    const float opacity = randomOpacity(rng);
    (stack.*add)(angle, distance, size, color, opacity);
}

template <typename Add>
void addGlow(Rng& rng, QxEffect& stack, Add add) {
    std::vector<QxGradient> stops = randomStops(rng);
    const float size = randomSize(rng);
    const uint32_t color = rng.next32();
    const float opacity = randomOpacity(rng);
    (stack.*add)(size, color, opacity, static_cast<int>(stops.size()), stops.data());
}

template <typename Add>
void addRelief(Rng& rng, QxEffect& stack, Add add) {
    const int style = rng.between(0, 2);
    const float size = rng.oneIn(6) ? within(rng, 0, 40) : static_cast<float>(rng.between(0, 16));
    const float depth = within(rng, -0.5f, 10.5f);
    const int direction = rng.between(0, 1);
    const int technique = rng.between(0, 1);
    const int soften = rng.between(-1, 17);
    const float opacity = randomOpacity(rng);
    const float angle = randomAngle(rng);
    const auto altitude = static_cast<float>(rng.between(-100, 100));
    const uint32_t highlight = rng.next32();
    const float highlightOpacity = randomOpacity(rng);
    const uint32_t shadow = rng.next32();
    const float shadowOpacity = randomOpacity(rng);
    (stack.*add)(style, size, depth, direction, technique, soften, opacity, angle, altitude, highlight,
                 highlightOpacity, shadow, shadowOpacity);
}

void addGradient(Rng& rng, QxEffect& stack, bool linear) {
    std::vector<QxGradient> stops = randomStops(rng);
    const float angle = randomAngle(rng);
    const float scale = rng.oneIn(3) ? 1.0f : within(rng, 0.05f, 2.2f);
    const float opacity = randomOpacity(rng);
    const int count = static_cast<int>(stops.size());
    if (linear)
        stack.addLinearGradientText(angle, scale, opacity, count, stops.data());
    else
        stack.addRadialGradientText(scale, opacity, count, stops.data());
}

void addStroke(Rng& rng, QxEffect& stack) {
    const float size = randomSize(rng);
    const uint32_t color = rng.next32();
    const float opacity = randomOpacity(rng);
    const int mode = rng.between(0, 3);
    const int position = rng.between(0, 3);
    stack.addStrokeText(size, color, opacity, mode, position);
}

void addPattern(Rng& rng, QxEffect& stack) {
    const auto width = static_cast<unsigned>(rng.between(1, 40));
    const auto height = static_cast<unsigned>(rng.between(1, 40));
    QxBitmap tile(width, height, 4u);
    for (unsigned i = 0; i < width * height * 4; ++i) tile.pixels[i] = rng.byte();
    const float scale = within(rng, 0.05f, 3.0f);
    stack.addPatternText(&tile, scale, randomOpacity(rng));
}

void drawGlyph(Rng& rng, QxEffect& stack, const Coverage& stored) {
    const int width = rng.between(1, 120);
    const int height = rng.between(1, 90);
    // One draw a statement: the order in which a call's arguments are evaluated is the compiler's own.
    const int left = rng.between(-10, stored.width - 10);
    const int top = rng.between(-10, stored.height - 10);
    Coverage piece = cut(stored, left, top, width, height);
    QxGlyph glyph{piece.pixels.data(), static_cast<uint16_t>(width), static_cast<uint16_t>(height), 0, 0};
    const int x = rng.between(-20, 60);
    const int y = rng.between(-20, 40);
    stack.renderEffectLayer(x, y, &glyph);
}

void appendNumber(std::vector<uint8_t>& bytes, int value) {
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<uint8_t>(value >> shift & 255));
}

}  // namespace

void addRandomEffect(Rng& rng, QxEffect& stack, int type) {
    switch (type) {
        case QXE_OUTER_SHADOW:
            return addShadow(rng, stack, &QxEffect::addOuterShadowText);
        case QXE_INNER_SHADOW:
            return addShadow(rng, stack, &QxEffect::addInnerShadowText);
        case QXE_OUTER_GLOW:
            return addGlow(rng, stack, &QxEffect::addOuterGlowText);
        case QXE_INNER_GLOW:
            return addGlow(rng, stack, &QxEffect::addInnerGlowText);
        case QXE_BEVEL:
            return addRelief(rng, stack, &QxEffect::addBevelText);
        case QXE_EMBOSS:
            return addRelief(rng, stack, &QxEffect::addEmbossText);
        case QXE_LINEAR_GRADIENT:
            return addGradient(rng, stack, true);
        case QXE_RADIAL_GRADIENT:
            return addGradient(rng, stack, false);
        case QXE_STROKE:
            return addStroke(rng, stack);
        case QXE_PATTERN:
            return addPattern(rng, stack);
        default:
            return;
    }
}

std::vector<uint8_t> drawScene(uint32_t number, int onlyType, const Coverage& stored) {
    Rng rng(number * 64u + static_cast<uint32_t>(onlyType));
    QxEffect stack;
    const int effects = onlyType > 0 ? 1 : rng.between(0, 6);
    for (int i = 0; i < effects; ++i) {
        static const int types[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11};
        addRandomEffect(rng, stack, onlyType > 0 ? onlyType : types[rng.below(10)]);
    }
    if (rng.oneIn(2)) stack.setTextOpacity(rng.unit());

    const int width = rng.between(1, 160);
    const int height = rng.between(1, 120);
    QxBitmap output(static_cast<unsigned>(width), static_cast<unsigned>(height), 4u);
    stack.addText(rng.oneIn(3) ? rng.next32() | 0xFF000000u : rng.next32());
    stack.initEffect(width, height);
    stack.setDstBitmap(&output);
    for (int glyphs = rng.between(1, 3); glyphs > 0; --glyphs) drawGlyph(rng, stack, stored);
    stack.doEffectPostProcessing();
    stack.compositeLayers(&output);

    std::vector<uint8_t> picture;
    appendNumber(picture, width);
    appendNumber(picture, height);
    picture.insert(picture.end(), output.pixels,
                   output.pixels + static_cast<size_t>(width) * static_cast<size_t>(height) * 4);
    return picture;
}

uint32_t crc32(uint32_t crc, const std::vector<uint8_t>& bytes) {
    crc = ~crc;
    for (const uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0u);
    }
    return ~crc;
}

}  // namespace QxFontEffect::test
