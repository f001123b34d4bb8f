#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Colours a gradient row looks up. A table built from stops has one entry more; the last stop's own entry is left
/// out, so its colour is reached only as far as the mix before it goes.
constexpr int kGradientColors = 256;

/// Where a row of a gradient comes from: the part of the table index that depends on the row, and the part that
/// depends on the column for each of `count` pixels. Everything is single precision, added in that order: the index
/// is truncated, so one bit of the sum can move a pixel to the next colour.
struct GradientRow {
    const uint8_t* coverage;   ///< selects pixels: 0 gives 0, any other value the full colour
    const float* columnTerms;  ///< one a pixel
    float rowTerm;
    int count;
};

/// A row of a linear gradient: entry 128 + trunc(rowTerm + columnTerm), limited to the table.
///
/// @param table  kGradientColors entries.
/// @param dst    `count` entries of the table or 0, written.
void linearGradientRow(const GradientRow& row, const uint32_t* table, uint32_t* dst);

/// A row of a radial gradient: entry trunc(step * sqrt(rowTerm + columnTerm)), limited to the table. The terms are
/// squared distances, in pixels squared; `step` is in entries a pixel. Parameters as above.
void radialGradientRow(const GradientRow& row, float step, const uint32_t* table, uint32_t* dst);

}  // namespace QxFontEffect
