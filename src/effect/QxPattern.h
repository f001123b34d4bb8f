#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxPatternProperty.h"

namespace QxFontEffect {

/// Fills the inked pixels with a tiled, scaled image, beneath what the destination holds already. The tiles start at
/// the top left corner of the text rectangle.
///
/// A pattern of another depth than 4, one that is empty and a scale below 0.1 or NaN draw nothing; so does a tile that
/// scales to less than a pixel, unless the rectangle is one pixel in that direction.
class QxPattern : public QxECoreBase {
public:
    QxPattern();
    ~QxPattern() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;

    QxPatternProperty* property;  ///< own copy, null until set; its `pattern` is the core's own deep copy

private:
    struct KeptCopy;

    /// Every image the core was ever given, freed with the core. The address of the copy stands for the pixels in the
    /// cache key, so an address may not come back while a key with it may still be in use.
    KeptCopy* copies;
};

}  // namespace QxFontEffect
