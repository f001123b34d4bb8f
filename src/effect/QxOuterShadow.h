#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxOuterShadowProperty.h"

namespace QxFontEffect {

/// Draws a blurred, shifted copy of the glyph coverage behind the text.
class QxOuterShadow : public QxECoreBase {
public:
    QxOuterShadow();
    ~QxOuterShadow() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    int getLeftOffset() override;
    int getRightOffset() override;
    int getTopOffset() override;
    int getBottomOffset() override;

    QxOuterShadowProperty* property;  ///< own copy, null until set
    int32_t dx;                       ///< shift in pixels, right positive
    int32_t dy;                       ///< shift in pixels, down positive
};

}  // namespace QxFontEffect
