#pragma once

#include <optional>

#include "harness/row.h"

namespace qxbench {

/// How much time is spent on a row.
struct Effort {
    int runs = 9;                 ///< runs of the library; a run is as many executions as fill `runSeconds`
    double runSeconds = 0.012;    ///< measured time a run lasts at least
    double slowSeconds = 6.0;     ///< a contender that has used up as much is left out of the remaining turns
    int executionsAtMost = 2000;  ///< a run
};

/// Runs of one contender. Each run stands for the median of its executions.
struct Figure {
    double median = 0.0;  ///< seconds
    double spread = 0.0;  ///< (slowest - fastest) / median
    int runs = 0;
};

struct Measurement {
    Figure ours;
    std::optional<Figure> plain;
    std::optional<Figure> peer;
    double plainRatio = 0.0;  ///< median over the turns of our time divided by theirs
    double peerRatio = 0.0;
};

enum Contenders : unsigned { kOurs = 1, kPlain = 2, kPeer = 4 };

/// Measures the contenders of a case in turns, one run each, so that a change of the machine's speed meets them all.
///
/// @param wanted  bits of Contenders; those that the case does not have are left out.
Measurement measure(const Case& work, unsigned wanted, const Effort& effort);

}  // namespace qxbench
