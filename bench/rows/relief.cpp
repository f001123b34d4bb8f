#include <cmath>

#include "effect/QxBevel.h"
#include "effect/QxEmboss.h"
#include "peers/peers.h"
#include "plain/plain.h"
#include "rows/core_row.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

enum Technique { kSmooth = 0, kHard = 1 };
constexpr int kOutside = 0;

// The plain loops take minutes beyond.
constexpr double kPlainLimit = 2.2e10;

template <typename Record>
Record record(int size, Technique technique) {
    return Record(kOutside, static_cast<float>(size), 3.0f, 0, technique, 0, 1.0f, 120.0f, 30.0f, 0xC0FFFFFFu, 0.75f,
                  0xC0000000u, 0.75f);
}

int smoothRadius(int size) {
    return static_cast<int>(std::ceil(2.0 * size / 3.0 + 1.0));
}

bool plainIsBearable(const Mask& mask, int margin, int radius) {
    const double side = 2.0 * radius + 1.0;
    return static_cast<double>(mask.width + 2 * margin) * (mask.height + 2 * margin) * side * side < kPlainLimit;
}

}  // namespace

void addReliefRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        for (const int size : {5, 20, 50})
            rows.push_back(
                coreRow<QxBevel, QxBevelProperty>(mask, std::to_string(size),
                                                  {"bevel smooth", record<QxBevelProperty>(size, kSmooth), Ground::Text,
                                                   3 * smoothRadius(size), plain::bevel, peers::bevel}));
        for (const int size : {2, 5, 20, 50}) {
            const int radius = size + 2;
            rows.push_back(coreRow<QxBevel, QxBevelProperty>(
                mask, std::to_string(size),
                {"bevel hard", record<QxBevelProperty>(size, kHard), Ground::Text, radius,
                 plainIsBearable(mask, radius, radius) ? plain::bevel : nullptr}));
        }
        for (const Technique technique : {kSmooth, kHard})
            rows.push_back(
                coreRow<QxEmboss, QxEmbossProperty>(mask, "12",
                                                    {technique == kSmooth ? "emboss smooth" : "emboss hard",
                                                     record<QxEmbossProperty>(12, technique), Ground::Text, 12}));
    }
}

}  // namespace qxbench
