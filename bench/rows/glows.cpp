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
constexpr double kGrowthSlack = 6.0, kSlack = 4.0;

template <typename Record>
Record record(int size) {
    return Record(static_cast<float>(size), 0xE0FFF0A0u, 1.0f, kStops, gStops);
}

/// A glow against one of the two ways in which the peers look its colours up.
template <typename Core, typename Record>
Row glowRow(const char* name, const Mask& mask, int size, Ground ground, peers::GlowColors by, double slack,
            void (*plainGlow)(const Record&, const ParamPostProcessing&),
            Step (*peerGlow)(CoreScene&, const QxGlowProperty&, peers::GlowColors)) {
    CoreWork<Record> work = {name, record<Record>(size), ground, 2 * (size + 1), plainGlow};
    work.peer = [=](CoreScene& scene, const Record& property) { return peerGlow(scene, property, by); };
    work.peerSlack = slack;
    return coreRow<Core, Record>(mask, std::to_string(size), work);
}

void addRows(const Mask& mask, int size, peers::GlowColors by, const char* outerName, const char* innerName,
             Rows& rows) {
    rows.push_back(glowRow<QxOuterGlow, QxOuterGlowProperty>(outerName, mask, size, Ground::Text, by, kGrowthSlack,
                                                             plain::outerGlow, peers::outerGlow));
    rows.push_back(glowRow<QxInnerGlow, QxInnerGlowProperty>(innerName, mask, size, Ground::Blank, by, kSlack,
                                                             plain::innerGlow, peers::innerGlow));
}

}  // namespace

void addGlowRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks)
        for (const int size : {5, 20, 50})
            addRows(mask, size, peers::GlowColors::Table, "outer glow", "inner glow", rows);
    for (const Mask& mask : masks)
        for (const int size : {5, 20})
            addRows(mask, size, peers::GlowColors::Palette, "outer glow / palette", "inner glow / palette", rows);
}

}  // namespace qxbench
