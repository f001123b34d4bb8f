#include "TextSettings.h"

#include <algorithm>
#include <cmath>

namespace minikin {

namespace {

// Letters that are visibly spaced must not be fused (CSS Text, letter-spacing); tiny corrections leave them alone.
constexpr float kFusedUpTo = 0.03f;

constexpr hb_feature_t switchedOff(hb_tag_t tag) {
    return {tag, 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
}

}  // namespace

std::vector<hb_feature_t> shapingFeatures(const TextSettings& settings) {
    std::vector<hb_feature_t> features;
    if (std::fabs(settings.letterSpacing) > kFusedUpTo) {
        features.push_back(switchedOff(HB_TAG('l', 'i', 'g', 'a')));
        features.push_back(switchedOff(HB_TAG('c', 'l', 'i', 'g')));
    }
    const std::string& text = settings.features;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(',', start), text.size());
        hb_feature_t feature;
        if (hb_feature_from_string(text.data() + start, static_cast<int>(end - start), &feature) &&
            feature.start == HB_FEATURE_GLOBAL_START && feature.end == HB_FEATURE_GLOBAL_END) {
            features.push_back(feature);
        }
        start = end + 1;
    }
    return features;
}

}  // namespace minikin
