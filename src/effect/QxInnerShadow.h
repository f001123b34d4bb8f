#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxInnerShadowProperty.h"

namespace QxFontEffect {

/// Darkens the inside of the glyphs along the edges that face the light.
class QxInnerShadow : public QxECoreBase {
public:
    QxInnerShadow();
    ~QxInnerShadow() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxInnerShadowProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
