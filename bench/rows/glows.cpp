#include "effect/QxInnerGlow.h"
#include "effect/QxOuterGlow.h"
#include "peers/peers.h"
#include "plain/plain.h"
#include "rows/core_row.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

QxGradient gStops[] = {{0xE0FFF0A0u, 1.0f, 0.0f}, {0xC0FF8020u, 1.0f, 0.5f}, {0x80C01010u, 1.0f, 1.0f}};
constexpr int kStops = 3;

// The library truncates in every pass of the growth where OpenCV rounds, which adds up.
constexpr double kGrowthSlack = 6.0;

template <typename Record>
Record record(int size) {
    return Record(static_cast<float>(size), 0xE0FFF0A0u, 1.0f, kStops, gStops);
}

}  // namespace

void addGlowRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks)
        for (const int size : {5, 20, 50}) {
            const int margin = 2 * (size + 1);
            rows.push_back(coreRow<QxOuterGlow, QxOuterGlowProperty>(
                mask, std::to_string(size),
                {"outer glow", record<QxOuterGlowProperty>(size), Ground::Text, margin, plain::outerGlow,
                 peers::outerGlow, kGrowthSlack}));
            rows.push_back(
                coreRow<QxInnerGlow, QxInnerGlowProperty>(mask, std::to_string(size),
                                                          {"inner glow", record<QxInnerGlowProperty>(size),
                                                           Ground::Blank, margin, plain::innerGlow, peers::innerGlow}));
        }
}

}  // namespace qxbench
