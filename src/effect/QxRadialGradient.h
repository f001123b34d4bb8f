#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxRadialGradientProperty.h"

namespace QxFontEffect {

/// Fills the inked pixels with a radial gradient around the centre of the text rectangle.
///
/// At scale 1 the table ends half the rectangle's width away from the centre. The angle is not used; everything else
/// is as for the linear gradient.
class QxRadialGradient : public QxECoreBase {
public:
    QxRadialGradient();
    ~QxRadialGradient() override;

    /// Copies the stops as well; `property->gradient` is this core's own.
    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxRadialGradientProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
