#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxStrokeProperty.h"

namespace QxFontEffect {

/// Outlines the glyphs with a band centred on their edge, outside it or inside it.
class QxStroke : public QxECoreBase {
public:
    QxStroke();
    ~QxStroke() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    int getOffset() override;

    QxStrokeProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
