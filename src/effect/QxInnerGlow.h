#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxInnerGlowProperty.h"

namespace QxFontEffect {

/// Draws the inner glow.
class QxInnerGlow : public QxECoreBase {
public:
    QxInnerGlow();
    ~QxInnerGlow() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    int getOffset() override;

    /// Fills the 257 entries of the colour table; the core calls it with range 0.3 and mode 0.
    void makeColorLUT(unsigned int* lut, float range, int mode);
    /// Grows a width x height grey image in place.
    void increaseByBoxFilter(unsigned char* buffer, int passes, int width, int height);

    QxInnerGlowProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
