#include "effect/QxStroke.h"
#include "peers/peers.h"
#include "plain/plain.h"
#include "rows/core_row.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr uint32_t kStrokeColor = 0xCC662200u;
enum Position { kCentred = 0, kOutside = 1, kInside = 2 };

// The plain loops take minutes beyond.
constexpr double kPlainLimit = 4e9;

// The library's disc fades out over its rim, OpenCV's has whole cells.
constexpr double kRimSlack = 8.0;

Row strokeRow(const char* name, const Mask& mask, int width, Position position) {
    const int margin = position == kCentred ? (width + 1) / 2 + 1 : width + 1;
    const double cells = static_cast<double>(mask.pixels()) * (2 * margin - 1) * (2 * margin - 1);
    return coreRow<QxStroke, QxStrokeProperty>(
        mask, std::to_string(width),
        {name, QxStrokeProperty(static_cast<float>(width), kStrokeColor, 0.8f, 0, position),
         position == kOutside ? Ground::Text : Ground::Blank, margin, cells < kPlainLimit ? plain::stroke : nullptr,
         peers::stroke, kRimSlack});
}

}  // namespace

void addStrokeRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        for (const int width : {5, 20, 100}) rows.push_back(strokeRow("stroke outside", mask, width, kOutside));
        for (const int width : {5, 20, 100}) rows.push_back(strokeRow("stroke centred", mask, width, kCentred));
        for (const int width : {5, 20, 100}) rows.push_back(strokeRow("stroke inside", mask, width, kInside));
    }
}

}  // namespace qxbench
