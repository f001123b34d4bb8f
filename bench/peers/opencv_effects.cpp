#include <algorithm>
#include <cmath>

#include "effect/kernel/color_ramp.h"
#include "effect/kernel/gauss_weights.h"
#include "peers/opencv_tools.h"
#include "peers/pixman_blend.h"

namespace qxbench::peers {

using namespace QxFontEffect;

namespace {

void paintThrough(CoreScene& scene, const cv::Mat& mask, uint32_t color, int x, int y,
                  pixman_op_t op = PIXMAN_OP_OVER_REVERSE) {
    compose(op, solidOf(color), maskOf(planeOf(mask)), pictureOf(scene.output), x, y, mask.cols, mask.rows);
}

cv::Mat padded(const cv::Mat& ink, int margin) {
    cv::Mat plane = newPlane(ink.cols + 2 * margin, ink.rows + 2 * margin);
    cv::copyMakeBorder(ink, plane, margin, margin, margin, margin, cv::BORDER_CONSTANT | cv::BORDER_ISOLATED,
                       cv::Scalar(0));
    return plane;
}

}  // namespace

Step outerShadow(CoreScene& scene, const QxShadowProperty& property) {
    return [&] {
        const int radius = static_cast<int>(property.size);
        const cv::Point shift = shiftOf(property);
        const cv::Mat ink = padded(matOf(scene.ink()), radius);
        cv::Mat soft = newPlane(ink.cols, ink.rows);
        blurWithBell(ink, radius, kSoftPeak, soft);
        paintThrough(scene, soft, property.color, scene.rect.left - radius + shift.x,
                     scene.rect.top - radius + shift.y);
    };
}

Step innerShadow(CoreScene& scene, const QxShadowProperty& property) {
    return [&] {
        const int radius = static_cast<int>(property.size);
        const cv::Point shift = shiftOf(property);
        const cv::Mat ink = matOf(scene.ink());
        // What is not ink, moved, with a frame that the blur reads.
        const int margin = radius + std::max(std::abs(shift.x), std::abs(shift.y));
        cv::Mat around = newPlane(ink.cols + 2 * margin, ink.rows + 2 * margin, 255);
        cv::Mat moved = around(cv::Rect(margin + shift.x, margin + shift.y, ink.cols, ink.rows));
        cv::bitwise_not(ink, moved);
        const cv::Mat seen = around(cv::Rect(margin, margin, ink.cols, ink.rows));
        cv::Mat soft = newPlane(ink.cols, ink.rows);
        blurWithBell(seen, radius, kSoftPeak, soft);
        cv::Mat gated = newPlane(ink.cols, ink.rows, 0);
        soft.copyTo(gated, ink);
        paintThrough(scene, gated, property.color, scene.rect.left, scene.rect.top);
    };
}

namespace {

/// A glow's lengths in pixels.
struct GlowSizes {
    explicit GlowSizes(float size) : step(static_cast<int>(size) + 1) {
        passes = std::max(static_cast<int>(step * 0.475), 1);
        radius = static_cast<int>(step * 0.9);
    }
    int step, passes, radius;
};

/// Every sample becomes a quarter of the sum of the nine around it, with rounding. Three taps of one half on each axis
/// take half the time of a box filter and the scaling after it.
cv::Mat grown(const cv::Mat& plane, int passes) {
    const float half[] = {0.5f, 0.5f, 0.5f};
    const cv::Mat taps(1, 3, CV_32F, const_cast<float*>(half));
    cv::Mat from = plane, to = newPlane(plane.cols, plane.rows);
    for (int i = 0; i < passes; ++i) {
        cv::sepFilter2D(from, to, CV_8U, taps, taps, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
        cv::swap(from, to);
    }
    return from;
}

/// The library's own table of a glow's 256 colours, red and blue exchanged.
void makeColors(const QxGlowProperty& property, uint32_t* colors) {
    uint32_t ramp[kRampEntries];
    makeColorRamp(property.gradient, property.count, RampStart::AtZero, RampCurve::Linear, ramp);
    fadeRampAlpha(ramp, 0.3f);
    for (int grey = 0; grey < 256; ++grey) {
        const uint32_t c = premultiplyColor(ramp[256 - grey]);
        colors[grey] = (c & 0xFF00FF00u) | (c >> 16 & 0xFFu) | (c & 0xFFu) << 16;
    }
}

void beneath(CoreScene& scene, const Image& colored, const cv::Mat& soft, int x, int y) {
    compose(PIXMAN_OP_OVER_REVERSE, colored, nullptr, pictureOf(scene.output), x, y, soft.cols, soft.rows);
}

/// Colours looked up by cv::LUT, which wants the grey as often as a colour has channels.
void paintByTable(CoreScene& scene, const QxGlowProperty& property, const cv::Mat& soft, int x, int y) {
    cv::Mat table(1, 256, CV_8UC4), grey, painted;
    makeColors(property, table.ptr<uint32_t>(0));
    const cv::Mat channels[] = {soft, soft, soft, soft};
    cv::merge(channels, 4, grey);
    cv::LUT(grey, table, painted);
    beneath(scene, pictureOf(painted.ptr<uint32_t>(0), painted.cols, painted.rows, painted.cols), soft, x, y);
}

/// The grey as a picture with a palette: pixman looks the colours up where it needs them.
void paintByPalette(CoreScene& scene, const QxGlowProperty& property, const cv::Mat& soft, int x, int y) {
    pixman_indexed_t palette{};
    makeColors(property, palette.rgba);
    const Image indexed = indexedOf({soft.data, soft.cols, soft.rows, static_cast<ptrdiff_t>(soft.step)}, palette);
    beneath(scene, indexed, soft, x, y);
}

void paintGlow(GlowColors by, CoreScene& scene, const QxGlowProperty& property, const cv::Mat& soft, int x, int y) {
    (by == GlowColors::Table ? paintByTable : paintByPalette)(scene, property, soft, x, y);
}

}  // namespace

Step outerGlow(CoreScene& scene, const QxGlowProperty& property, GlowColors by) {
    return [&, by] {
        const GlowSizes sizes(property.size);
        const int margin = sizes.passes + sizes.radius;
        const cv::Mat ink = padded(matOf(scene.ink()), margin);
        cv::Mat soft = newPlane(ink.cols, ink.rows);
        blurWithBell(grown(ink, sizes.passes), sizes.radius, kGlowPeak, soft);
        paintGlow(by, scene, property, soft, scene.rect.left - margin, scene.rect.top - margin);
    };
}

Step innerGlow(CoreScene& scene, const QxGlowProperty& property, GlowColors by) {
    return [&, by] {
        const GlowSizes sizes(property.size);
        const cv::Mat ink = matOf(scene.ink());
        const int margin = sizes.passes + sizes.radius;
        cv::Mat around = newPlane(ink.cols + 2 * margin, ink.rows + 2 * margin, 255);
        cv::Mat middle = around(cv::Rect(margin, margin, ink.cols, ink.rows));
        cv::bitwise_not(ink, middle);
        const cv::Mat blank = grown(around, sizes.passes);
        cv::Mat soft = newPlane(ink.cols, ink.rows);
        blurWithBell(blank(cv::Rect(margin, margin, ink.cols, ink.rows)), sizes.radius, kGlowPeak, soft);
        cv::bitwise_not(soft, soft);
        paintGlow(by, scene, property, soft, scene.rect.left, scene.rect.top);
    };
}

Step stroke(CoreScene& scene, const QxStrokeProperty& property) {
    return [&] {
        const bool centred = property.position == 0, outside = property.position == 1;
        const double radius = static_cast<double>(property.size) * (centred ? 0.5 : 1.0);
        const cv::Mat disc = discOf(radius);
        const int margin = outside || centred ? disc.cols / 2 : 0;
        const cv::Mat ink = padded(matOf(scene.ink()), margin);
        cv::Mat band = newPlane(ink.cols, ink.rows), shrunk;
        if (outside || centred) cv::dilate(ink, band, disc);
        if (!outside) {
            cv::erode(ink, shrunk, disc, cv::Point(-1, -1), 1, cv::BORDER_CONSTANT, cv::Scalar(0));
            cv::bitwise_not(shrunk, shrunk);
            centred ? cv::min(band, shrunk, band) : static_cast<void>(shrunk.copyTo(band));
        }
        paintThrough(scene, band, property.color, scene.rect.left - margin, scene.rect.top - margin,
                     centred ? PIXMAN_OP_OVER : PIXMAN_OP_OVER_REVERSE);
    };
}

namespace {

/// One of the two maps: what the light leaves or gives, as strong as the pixel lies close to the outline.
cv::Mat lightMap(const cv::Mat& light, const cv::Mat& strength, double alpha) {
    cv::Mat map;
    cv::multiply(light, strength, map, alpha / 255.0 / 256.0, CV_8U);
    return map;
}

cv::Mat slopeLight(const cv::Mat& distances, const QxBevelProperty& property) {
    const double turn = (180.0 - static_cast<double>(property.angle)) * 3.14159265358979 / 180.0;
    const double rise = static_cast<double>(property.altitude) * 3.14159265358979 / 180.0;
    const double sign = property.direction == 0 ? -1.0 : 1.0;
    const double lx = sign * std::cos(turn) * std::cos(rise), ly = sign * std::sin(turn) * std::cos(rise);
    const double h = 2.4 / std::max(static_cast<double>(property.depth), 0.1);

    cv::Mat gx, gy, length, light, squares;
    const float slope[] = {0.5f, 0.0f, -0.5f}, one[] = {1.0f};
    const cv::Mat slopeTaps(1, 3, CV_32F, const_cast<float*>(slope)), oneTap(1, 1, CV_32F, const_cast<float*>(one));
    cv::sepFilter2D(distances, gx, CV_32F, slopeTaps, oneTap);
    cv::sepFilter2D(distances, gy, CV_32F, oneTap, slopeTaps);
    cv::multiply(gx, gx, length);
    cv::multiply(gy, gy, squares);
    cv::add(length, squares, length);
    cv::add(length, cv::Scalar(h * h), length);
    cv::sqrt(length, length);
    cv::addWeighted(gx, -lx, gy, -ly, h * std::sin(rise), light);
    cv::divide(light, length, light, 255.0);
    cv::max(light, 0.0, light);
    cv::min(light, 255.0, light);
    return light;
}

cv::Mat blurredMap(const cv::Mat& map, int radius) {
    cv::Mat soft;
    blurWithBell(map, radius, kSoftPeak, soft);
    return soft;
}

/// What is left of both maps becomes a premultiplied colour.
cv::Mat reliefColors(const cv::Mat& shadow, const cv::Mat& highlight, const QxBevelProperty& property) {
    cv::Mat lit, shaded;
    cv::subtract(highlight, shadow, lit);
    cv::subtract(shadow, highlight, shaded);
    cv::Mat painted(shadow.rows, shadow.cols, CV_8UC4);
    // Colours by strength; of the two strengths of a pixel at least one is 0.
    uint32_t litColors[256], shadedColors[256];
    for (uint32_t i = 0; i < 256; ++i) {
        const uint32_t strength = std::min(static_cast<uint32_t>(i * 1.83), 255u);
        const auto colorOf = [strength](uint32_t c) {
            const auto channel = [&](int shift) { return (c >> shift & 255) * strength / 255; };
            return strength << 24 | channel(0) << 16 | channel(8) << 8 | channel(16);
        };
        litColors[i] = colorOf(property.highlightColor);
        shadedColors[i] = colorOf(property.shadowColor);
    }
    for (int row = 0; row < painted.rows; ++row) {
        const uint8_t* a = lit.ptr<uint8_t>(row);
        const uint8_t* b = shaded.ptr<uint8_t>(row);
        uint32_t* out = painted.ptr<uint32_t>(row);
        for (int column = 0; column < painted.cols; ++column)
            out[column] = litColors[a[column]] | shadedColors[b[column]];
    }
    return painted;
}

}  // namespace

Step bevel(CoreScene& scene, const QxBevelProperty& property) {
    return [&] {
        const int radius = static_cast<int>(std::ceil(2.0 * static_cast<int>(property.size) / 3.0 + 1.0));
        const int margin = 2 * radius;
        const cv::Mat distances = distancesFrom(padded(matOf(scene.ink()), margin), radius);
        const cv::Mat light = slopeLight(distances, property);
        cv::Mat strength, dark;
        cv::subtract(cv::Scalar(static_cast<double>(radius)), distances, strength);
        cv::subtract(cv::Scalar(255.0), light, dark);
        const cv::Mat shadow = blurredMap(lightMap(dark, strength, property.shadowColor >> 24), radius);
        const cv::Mat highlight = blurredMap(lightMap(light, strength, property.highlightColor >> 24), radius);
        const cv::Mat painted = reliefColors(shadow, highlight, property);
        const Image from =
            pictureOf(const_cast<uint32_t*>(painted.ptr<uint32_t>(0)), painted.cols, painted.rows, painted.cols);
        compose(PIXMAN_OP_OVER_REVERSE, from, nullptr, pictureOf(scene.output), scene.rect.left - margin,
                scene.rect.top - margin, painted.cols, painted.rows);
    };
}

}  // namespace qxbench::peers
