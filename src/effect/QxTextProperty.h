#pragma once

#include "effect/QxProperty.h"

namespace QxFontEffect {

/// Settings of the plain colour fill.
class QxTextProperty : public QxProperty {
public:
    QxTextProperty(unsigned int color, float opacity);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;
};

}  // namespace QxFontEffect
