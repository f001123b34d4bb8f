#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxEmbossProperty.h"

namespace QxFontEffect {

/// Presses a relief that straddles the outline.
class QxEmboss : public QxECoreBase {
public:
    QxEmboss();
    ~QxEmboss() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    int getOffset() override;

    QxEmbossProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
