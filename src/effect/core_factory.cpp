#include "effect/core_factory.h"

#include <new>

#include "effect/QxBevel.h"
#include "effect/QxEmboss.h"
#include "effect/QxInnerGlow.h"
#include "effect/QxInnerShadow.h"
#include "effect/QxLinearGradient.h"
#include "effect/QxOuterGlow.h"
#include "effect/QxOuterShadow.h"
#include "effect/QxPattern.h"
#include "effect/QxRadialGradient.h"
#include "effect/QxStroke.h"
#include "effect/QxText.h"

namespace QxFontEffect {
namespace {

template <typename Core>
QxECoreBase* make() {
    return new (std::nothrow) Core;
}

struct Maker {
    QxEffectType type;
    QxECoreBase* (*make)();
};

constexpr Maker kMakers[] = {
    {QXE_OUTER_SHADOW, make<QxOuterShadow>},
    {QXE_INNER_SHADOW, make<QxInnerShadow>},
    {QXE_OUTER_GLOW, make<QxOuterGlow>},
    {QXE_INNER_GLOW, make<QxInnerGlow>},
    {QXE_BEVEL, make<QxBevel>},
    {QXE_EMBOSS, make<QxEmboss>},
    {QXE_LINEAR_GRADIENT, make<QxLinearGradient>},
    {QXE_RADIAL_GRADIENT, make<QxRadialGradient>},
    {QXE_STROKE, make<QxStroke>},
    {QXE_PATTERN, make<QxPattern>},
    {QXE_TEXT, make<QxText>},
};

}  // namespace

QxECoreBase* makeCore(int type) {
    for (const Maker& maker : kMakers)
        if (maker.type == type) return maker.make();
    return nullptr;
}

}  // namespace QxFontEffect
