#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxLinearGradientProperty.h"

namespace QxFontEffect {

/// Fills the inked pixels with a linear gradient.
class QxLinearGradient : public QxECoreBase {
public:
    QxLinearGradient();
    ~QxLinearGradient() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxLinearGradientProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
