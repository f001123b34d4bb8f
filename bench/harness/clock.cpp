#include "harness/clock.h"

#include <algorithm>
#include <ctime>
#include <vector>

namespace qxbench {

double threadSeconds() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double clockCost() {
    static const double cost = [] {
        std::vector<double> gaps(1001);
        for (double& gap : gaps) {
            const double start = threadSeconds();
            gap = threadSeconds() - start;
        }
        std::nth_element(gaps.begin(), gaps.begin() + 500, gaps.end());
        return gaps[500];
    }();
    return cost;
}

}  // namespace qxbench
