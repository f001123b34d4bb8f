#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxTextProperty.h"

namespace QxFontEffect {

/// Fills the glyph coverage with one colour: the text itself.
class QxText : public QxECoreBase {
public:
    QxText();
    ~QxText() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxTextProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
