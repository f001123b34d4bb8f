#pragma once

#include "effect/kernel/gauss.h"
#include "effect/kernel/gauss_weights.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Which way the division by the weight sum goes. A blur of the complement is the complement of a blur that rounds
/// the other way, trunc((255 * sum - S) / sum) = 255 - ceil(S / sum): effects that blur what the glyphs leave free
/// blur the coverage, round up, and need no plane of 255s around it.
enum class GaussRounding { Down, Up };

/// Which pass comes first; both truncate, so that it shows.
enum class GaussOrder { ColumnsFirst, RowsFirst };

/// The sum of nothing but zeros: rounding up is rounding down of a sum that starts higher.
inline int32_t emptySumOf(GaussRounding rounding, int32_t weightSum) {
    return rounding == GaussRounding::Up ? weightSum - 1 : 0;
}

/// Both passes of a blur over a plane and its surroundings.
struct GaussJob {
    ConstPlane8 src = {};  ///< samples outside it count as 0
    const GaussBell* bell = nullptr;
    GaussRange out = {};                          ///< wanted part in the coordinates of src; may reach beyond it
    GaussRounding columns = GaussRounding::Down;  ///< of the vertical pass
    GaussRounding rows = GaussRounding::Down;     ///< of the horizontal pass
    GaussOrder order = GaussOrder::ColumnsFirst;
};

/// Outputs a row.
inline int outputsOf(const GaussJob& job) {
    return job.out.xEnd > job.out.xStart ? job.out.xEnd - job.out.xStart : 0;
}

}  // namespace QxFontEffect
