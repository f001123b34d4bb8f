#pragma once

namespace qxbench {

/// Processor time of the calling thread in seconds. What other programs do on the machine is not in it, apart from the
/// caches and the clock rate they share with it.
double threadSeconds();

/// What reading the clock twice costs, to be taken off short times. Seconds.
double clockCost();

}  // namespace qxbench
