#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxRadialGradientProperty.h"

namespace QxFontEffect {

/// Fills the inked pixels with a radial gradient.
class QxRadialGradient : public QxECoreBase {
public:
    QxRadialGradient();
    ~QxRadialGradient() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxRadialGradientProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
