#include "report.h"

#include <cmath>

#include <nlohmann/json.hpp>

namespace qxrender {

std::string formatReport(const Rendering& rendering) {
    using Json = nlohmann::ordered_json;
    Json adjusted = Json::array();
    for (const Adjustment& a : rendering.adjustments)
        adjusted.push_back({{"effect", a.effect}, {"parameter", a.parameter}, {"asked", a.asked}, {"used", a.used}});
    Json times = Json::object();
    for (const auto& [stage, milliseconds] : rendering.milliseconds)
        times[stage] = std::round(milliseconds * 1000) / 1000;
    const Padding& m = rendering.margins;
    const Json report = {
        {"picture", {{"width", rendering.picture.width}, {"height", rendering.picture.height}}},
        {"view",
         {{"x", rendering.textX},
          {"y", rendering.textY},
          {"width", rendering.viewWidth},
          {"height", rendering.viewHeight}}},
        {"margins", {{"left", m.left}, {"top", m.top}, {"right", m.right}, {"bottom", m.bottom}}},
        {"lines", rendering.lines},
        {"layerMode", rendering.layerMode},
        {"adjusted", adjusted},
        {"milliseconds", times},
    };
    return report.dump(2) + "\n";
}

}  // namespace qxrender
