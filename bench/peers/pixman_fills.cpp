#include <cmath>
#include <memory>
#include <vector>

#include "peers/pixman_blend.h"

namespace qxbench::peers {

using namespace QxFontEffect;

namespace {

constexpr double kRadians = 3.14159265358979 / 180.0;

std::vector<pixman_gradient_stop_t> stopsOf(const QxGradientFillProperty& property) {
    std::vector<pixman_gradient_stop_t> stops;
    for (int i = 0; i < property.count; ++i) {
        const QxGradient& stop = property.gradient[i];
        // Pixman premultiplies the stops of a gradient itself.
        const uint32_t c = stop.color;
        const auto channel = [&](int shift) { return static_cast<uint16_t>((c >> shift & 255) * 257); };
        stops.push_back({pixman_double_to_fixed(static_cast<double>(stop.position)),
                         {channel(0), channel(8), channel(16), channel(24)}});
    }
    return stops;
}

pixman_point_fixed_t fixedPoint(double x, double y) {
    return {pixman_double_to_fixed(x), pixman_double_to_fixed(y)};
}

/// Through the coverage, beneath what the picture holds.
void paintFill(CoreScene& scene, const Image& fill) {
    const ConstPlane8 ink = scene.ink();
    compose(PIXMAN_OP_OVER_REVERSE, fill, maskOf(ink), pictureOf(scene.output), scene.rect.left, scene.rect.top,
            ink.width, ink.height);
}

}  // namespace

Step linearGradient(CoreScene& scene, const QxGradientFillProperty& property) {
    return [&] {
        const double w = scene.rect.right - scene.rect.left, h = scene.rect.bottom - scene.rect.top;
        const double x = -static_cast<double>(property.angle) * kRadians;
        const bool flat = std::fabs(std::tan(x)) < h / w;
        const double length = (flat ? w / std::fabs(std::cos(x)) : h / std::fabs(std::sin(x))) *
                              static_cast<double>(property.scale) / 2.0;
        const pixman_point_fixed_t from = fixedPoint(w / 2 - length * std::cos(x), h / 2 - length * std::sin(x));
        const pixman_point_fixed_t to = fixedPoint(w / 2 + length * std::cos(x), h / 2 + length * std::sin(x));
        const std::vector<pixman_gradient_stop_t> stops = stopsOf(property);
        const Image fill(pixman_image_create_linear_gradient(&from, &to, stops.data(), property.count));
        pixman_image_set_repeat(fill.get(), PIXMAN_REPEAT_PAD);
        paintFill(scene, fill);
    };
}

Step radialGradient(CoreScene& scene, const QxGradientFillProperty& property) {
    return [&] {
        const double w = scene.rect.right - scene.rect.left, h = scene.rect.bottom - scene.rect.top;
        const pixman_point_fixed_t centre = fixedPoint(w / 2, h / 2);
        const std::vector<pixman_gradient_stop_t> stops = stopsOf(property);
        const Image fill(pixman_image_create_radial_gradient(
            &centre, &centre, 0, pixman_double_to_fixed(w / 2 * static_cast<double>(property.scale)), stops.data(),
            property.count));
        pixman_image_set_repeat(fill.get(), PIXMAN_REPEAT_PAD);
        paintFill(scene, fill);
    };
}

Step pattern(CoreScene& scene, const QxPatternProperty& property) {
    // The image in pixman's own order, made once: its bytes are A, R, G, B.
    const QxBitmap& image = *property.pattern;
    const int width = static_cast<int>(image.width), height = static_cast<int>(image.height);
    const auto pixels = std::make_shared<std::vector<uint32_t>>();
    for (const uint8_t* p = image.pixels; p != image.pixels + 4 * image.width * image.height; p += 4)
        pixels->push_back(uint32_t{p[0]} << 24 | uint32_t{p[3]} << 16 | uint32_t{p[2]} << 8 | p[1]);
    return [&scene, &property, pixels, width, height] {
        const Image fill = pictureOf(pixels->data(), width, height, width);
        pixman_transform_t scale;
        pixman_transform_init_scale(&scale, pixman_double_to_fixed(1.0 / static_cast<double>(property.scale)),
                                    pixman_double_to_fixed(1.0 / static_cast<double>(property.scale)));
        pixman_image_set_transform(fill.get(), &scale);
        pixman_image_set_repeat(fill.get(), PIXMAN_REPEAT_NORMAL);
        pixman_image_set_filter(fill.get(), PIXMAN_FILTER_BILINEAR, nullptr, 0);
        paintFill(scene, fill);
    };
}

}  // namespace qxbench::peers
