#pragma once

#include "effect/QxProperty.h"
#include "pixel/QxBitmap.h"

namespace QxFontEffect {

/// Settings of the pattern fill.
class QxPatternProperty : public QxProperty {
public:
    QxPatternProperty(QxBitmap* pattern, float scale, float opacity);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;

    QxBitmap* pattern;  ///< 4 bytes a pixel: A, R, G, B in memory; kept, not copied, not owned by the record
    float scale;        ///< clamped to 0..10
};

}  // namespace QxFontEffect
