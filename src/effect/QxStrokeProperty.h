#pragma once

#include "effect/QxProperty.h"

namespace QxFontEffect {

/// Settings of the stroke.
class QxStrokeProperty : public QxProperty {
public:
    QxStrokeProperty(float size, unsigned int color, float opacity, int mode, int position);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;

    float size;        ///< band width in pixels
    int32_t mode;      ///< carried and serialised, not read by the core
    int32_t position;  ///< 0 centred on the outline, 1 outside, any other value inside
};

}  // namespace QxFontEffect
