#pragma once

#include <cstdint>

#include "effect/QxECoreBase.h"
#include "effect/QxStrokeProperty.h"

namespace QxFontEffect {

/// One slice of a dilation: what `partalDTStrokeCenter`, `partalDTStrokeOutside` and `partalDTStrokeInside` take.
///
/// A slice writes into the rows of its neighbours, half a kernel far, so slices of one plane must not run at the same
/// time.
struct StrokeWork {
    uint8_t* dst;           ///< output plane; two of them for the centred stroke
    const uint8_t* src;     ///< coverage with its frame
    const uint8_t* kernel;  ///< kernelSize x kernelSize weights
    int32_t srcStride;      ///< bytes from one source row to the next
    int32_t srcHeight;      ///< informative
    int32_t srcY;           ///< where the slice's row 0 lies in the source
    int32_t srcX;           ///< where the slice's column 0 lies in the source
    int32_t dstStride;      ///< bytes from one output row to the next
    int32_t dstHeight;      ///< informative
    int32_t dstY;           ///< output row of source row 0
    int32_t dstX;           ///< output column of source column 0
    int32_t planeOffset;    ///< bytes from output plane A to output plane B
    int32_t radius;         ///< informative
    int32_t kernelSize;     ///< side of the kernel
    int32_t columns;        ///< source columns to process in each row
    int32_t rows;           ///< informative
    int32_t firstRow;       ///< first source row of the slice
    int32_t endRow;         ///< the row behind its last
};

/// Builds a disc for a grey dilation: 255 within `radius`, falling to 0 over the pixel beyond.
///
/// @param kernel  receives D x D bytes, rows one after the other, which the caller gives to `free`; null when there
///                is no such disc (NaN, -1.5 and less, more than 2^31 bytes) or no memory.
/// @return the side D, odd; 0 without a disc.
int makeCircleKernel(unsigned char** kernel, float radius);

/// Grey dilation of one slice. `work` is a `StrokeWork`; every output byte becomes the maximum of itself and
/// value + weight - 255 over all source pixels whose kernel covers it. Return 0.
///
/// The values are the coverage for the outside stroke, its complement for the inside stroke, and both for the centred
/// stroke: coverage into plane A, complement into plane B.
int partalDTStrokeCenter(void* work);
int partalDTStrokeOutside(void* work);
int partalDTStrokeInside(void* work);

/// Outlines the glyphs with a band centred on their edge, outside it or inside it.
///
/// The band is a grey dilation of the coverage with an anti-aliased disc; inside the glyphs it is the dilation of the
/// coverage's complement, and the centred band is the minimum of both. The inside band therefore covers everything
/// around the glyphs as well, up to the text rectangle grown by the width: it is meant for the layer composition,
/// which confines it to the glyphs.
///
/// Nothing is drawn for a width that is not a number or too large for memory.
class QxStroke : public QxECoreBase {
public:
    QxStroke();
    ~QxStroke() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    /// The width outside, half of it centred, rounded; an inside stroke needs no margin.
    int getOffset() override;

    QxStrokeProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
