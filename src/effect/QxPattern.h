#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxPatternProperty.h"

namespace QxFontEffect {

/// Fills the inked pixels with a tiled, scaled image.
class QxPattern : public QxECoreBase {
public:
    QxPattern();
    ~QxPattern() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxPatternProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
