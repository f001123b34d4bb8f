#include "effect/QxInnerShadow.h"
#include "effect/QxOuterShadow.h"
#include "peers/peers.h"
#include "plain/plain.h"
#include "rows/core_row.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr uint32_t kShadowColor = 0x99001A33u;
constexpr float kAngle = 135.0f, kDistance = 8.0f;

}  // namespace

void addShadowRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        for (const int radius : {2, 5, 10, 20, 50, 100}) {
            const QxOuterShadowProperty record(kAngle, kDistance, static_cast<float>(radius), kShadowColor, 0.6f);
            rows.push_back(coreRow<QxOuterShadow, QxOuterShadowProperty>(
                mask, std::to_string(radius),
                {"outer shadow", record, Ground::Text, 2 * radius, plain::outerShadow, peers::outerShadow}));
        }
        for (const int radius : {5, 20, 100}) {
            const QxInnerShadowProperty record(kAngle, kDistance, static_cast<float>(radius), kShadowColor, 0.6f);
            rows.push_back(coreRow<QxInnerShadow, QxInnerShadowProperty>(
                mask, std::to_string(radius),
                {"inner shadow", record, Ground::Blank, 2 * radius, plain::innerShadow, peers::innerShadow}));
        }
    }
}

}  // namespace qxbench
