#pragma once

#include <algorithm>

#include "base/Scratch.h"
#include "effect/QxGradientFillProperty.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/gradient.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {

/// What the linear and the radial gradient core share: their own copy of the stops, the table of colours, and the
/// walk over the inked pixels.

/// A copy of `count` stops, the caller's with delete[]; null without stops or memory.
QxGradient* copyStops(const QxGradient* stops, int32_t count);

/// replaceRecord for a record whose last two settings are the number of stops and stops of its own: copies of
/// `given`'s. Without memory for these there is no record either, since it would show other colours.
template <typename Record, typename... Settings>
void replaceRecordWithStops(Record*& slot, const Record& given, Settings... settings) {
    QxGradient* stops = copyStops(given.gradient, given.count);
    const bool isLost = stops == nullptr && given.gradient != nullptr && given.count > 0;
    const QxGradient* old = slot == nullptr ? nullptr : slot->gradient;
    replaceRecord(slot, settings..., given.count, stops);
    if (slot == nullptr) delete[] stops;
    delete[] old;
    if (!isLost) return;
    delete slot;
    slot = nullptr;
}

/// Gives a core a copy of `given`'s record with stops of its own in place of `slot`'s.
template <typename Record>
void replaceGradientRecord(Record*& slot, const Record& given) {
    replaceRecordWithStops(slot, given, given.angle, given.scale, given.opacity);
}

template <typename Record>
void deleteGradientRecord(Record* record) {
    if (record != nullptr) delete[] record->gradient;
    delete record;
}

/// The text rectangle of a gradient and the part of it, in its own columns and rows, that has coverage and lies in the
/// destination. The gradient spans the whole rectangle, whatever part of it is drawn.
struct GradientBox {
    int64_t width, height;
    int64_t left, top, right, bottom;
};

/// What a gradient is painted with.
struct GradientFill {
    GradientBox box;
    float width, height;              ///< of the whole box
    uint32_t table[kGradientColors];  ///< premultiplied
};

/// Makes a core ready to paint. False when there is nothing to paint: a part is missing, the record has no stops or a
/// scale below 0.1 or NaN, or nothing of the box is seen.
bool prepareGradient(const ParamPostProcessing* p, const QxGradientFillProperty* property, GradientFill& fill);

/// Paints one gradient row after the other beneath the destination.
///
/// @param columnTerm  float(int64_t column): the part of a pixel's place that depends on the column.
/// @param paintRow    void(int64_t row, GradientRow&, uint32_t* dst): sets the row term and fills dst.
template <typename ColumnTerm, typename PaintRow>
void paintGradient(const ParamPostProcessing& p, const GradientBox& box, ColumnTerm columnTerm, PaintRow paintRow) {
    const int count = static_cast<int>(box.right - box.left);
    Scratch<float> terms(count);
    Scratch<uint32_t> colors(count);
    if (!terms || !colors) return;
    for (int i = 0; i < count; ++i) terms[static_cast<size_t>(i)] = columnTerm(box.left + i);

    const ConstPlane8 coverage = coverageOf(*p.srcBitmap);
    const int x = static_cast<int>(p.textRect->left + box.left);
    for (int64_t row = box.top; row < box.bottom; ++row) {
        const int y = static_cast<int>(p.textRect->top + row);
        GradientRow gradient{coverage.row(y) + x, terms.data(), 0.0f, count};
        paintRow(row, gradient, colors.data());
        QxBlender::drawBitmapBlend32(x, y, p.dstBitmap, colors.data(), count, 1, count, QXE_BLEND_DST_OVER);
    }
}

}  // namespace QxFontEffect
