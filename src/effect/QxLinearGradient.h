#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxLinearGradientProperty.h"

namespace QxFontEffect {

/// Fills the inked pixels with a linear gradient that spans the text rectangle.
///
/// Coverage selects pixels and does not weight the colour. Angle 0 runs from left to right, 90 along the rows. Scales
/// below 0.1 and records without stops paint nothing.
class QxLinearGradient : public QxECoreBase {
public:
    QxLinearGradient();
    ~QxLinearGradient() override;

    /// Copies the stops as well; `property->gradient` is this core's own.
    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxLinearGradientProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
