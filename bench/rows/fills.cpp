#include "effect/QxLinearGradient.h"
#include "effect/QxPattern.h"
#include "effect/QxRadialGradient.h"
#include "effect/QxText.h"
#include "peers/peers.h"
#include "plain/plain.h"
#include "rows/core_row.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

QxGradient gStops[] = {{0xFFFF3020u, 1.0f, 0.0f}, {0xC040C040u, 1.0f, 0.4f}, {0xFF2040FFu, 1.0f, 1.0f}};
constexpr int kStops = 3;
constexpr int kPatternSide = 48;
constexpr float kPatternScale = 1.7f;

QxBitmap makeImage() {
    QxBitmap image(kPatternSide, kPatternSide, 4);
    for (int y = 0; y < kPatternSide; ++y)
        for (int x = 0; x < kPatternSide; ++x) {
            const int bytes[] = {255, 5 * x, 5 * y, (x ^ y) & 32 ? 240 : 20};
            for (int k = 0; k < 4; ++k) image.pixels[4 * (y * kPatternSide + x) + k] = static_cast<uint8_t>(bytes[k]);
        }
    return image;
}

QxBitmap* patternImage() {
    static QxBitmap image = makeImage();
    return &image;
}

void plainFill(const QxTextProperty& property, const ParamPostProcessing& p) {
    plain::dstOver8(p.srcBitmap->pixels, property.color, p.dstBitmap->pixels,
                    int64_t{p.srcBitmap->width} * p.srcBitmap->height);
}

Step peerFill(CoreScene& scene, const QxTextProperty& property) {
    return peers::blendMask(peers::Operator::DstOver, scene.ink(), property.color, scene.output.pixels);
}

// Coverage selects pixels in the library and weights them in pixman, so outlines differ.
constexpr double kOutlineSlack = 12.0;

}  // namespace

void addFillRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        rows.push_back(coreRow<QxText, QxTextProperty>(
            mask, "", {"fill", QxTextProperty(0xFF2040C0u, 1.0f), Ground::Blank, 0, plainFill, peerFill}));
        rows.push_back(coreRow<QxLinearGradient, QxLinearGradientProperty>(
            mask, "",
            {"linear gradient", QxLinearGradientProperty(60.0f, 1.0f, 1.0f, kStops, gStops), Ground::Blank, 0,
             plain::linearGradient, peers::linearGradient, kOutlineSlack}));
        rows.push_back(coreRow<QxRadialGradient, QxRadialGradientProperty>(
            mask, "",
            {"radial gradient", QxRadialGradientProperty(0.0f, 1.0f, 1.0f, kStops, gStops), Ground::Blank, 0,
             plain::radialGradient, peers::radialGradient, kOutlineSlack}));
        rows.push_back(
            coreRow<QxPattern, QxPatternProperty>(mask, "",
                                                  {"pattern", QxPatternProperty(patternImage(), kPatternScale, 1.0f),
                                                   Ground::Blank, 0, plain::pattern, peers::pattern, kOutlineSlack}));
    }
}

}  // namespace qxbench
