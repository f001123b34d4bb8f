#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxBevelProperty.h"

namespace QxFontEffect {

/// Makes the glyphs look raised.
class QxBevel : public QxECoreBase {
public:
    QxBevel();
    ~QxBevel() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    int getOffset() override;

    QxBevelProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
