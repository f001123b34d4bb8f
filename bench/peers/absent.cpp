#include "peers/peers.h"

// For builds without OpenCV and pixman.
namespace qxbench::peers {

using namespace QxFontEffect;

std::string description() {
    return "";
}

Step blur(ConstPlane8, int, int, Plane8) {
    return {};
}
Step distances(ConstPlane8, int, PlaneF) {
    return {};
}
Step outerShadow(CoreScene&, const QxShadowProperty&) {
    return {};
}
Step innerShadow(CoreScene&, const QxShadowProperty&) {
    return {};
}
Step outerGlow(CoreScene&, const QxGlowProperty&, GlowColors) {
    return {};
}
Step innerGlow(CoreScene&, const QxGlowProperty&, GlowColors) {
    return {};
}
Step stroke(CoreScene&, const QxStrokeProperty&) {
    return {};
}
Step bevel(CoreScene&, const QxBevelProperty&) {
    return {};
}
Step linearGradient(CoreScene&, const QxGradientFillProperty&) {
    return {};
}
Step radialGradient(CoreScene&, const QxGradientFillProperty&) {
    return {};
}
Step pattern(CoreScene&, const QxPatternProperty&) {
    return {};
}
Step blendMask(Operator, ConstPlane8, uint32_t, uint8_t*) {
    return {};
}
Step blendPicture(Operator, ConstPlane32, uint8_t*) {
    return {};
}
Step maximum(ConstPlane8, Plane8) {
    return {};
}
Step unpremultiply(Plane32) {
    return {};
}
Step swapRedBlue(Plane32) {
    return {};
}

}  // namespace qxbench::peers
