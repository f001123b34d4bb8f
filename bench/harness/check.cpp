#include "harness/check.h"

#include <cmath>
#include <cstdio>

namespace qxbench {
namespace {

std::vector<float> resultOf(const Case& work, const Step& step) {
    if (work.reset) work.reset();
    step();
    return work.result();
}

double meanDifference(const std::vector<float>& a, const std::vector<float>& b) {
    double sum = 0.0;
    for (size_t i = 0; i < a.size(); ++i) sum += std::fabs(static_cast<double>(a[i]) - static_cast<double>(b[i]));
    return sum / static_cast<double>(a.size());
}

bool allZero(const std::vector<float>& values) {
    for (const float value : values)
        if (value != 0.0f) return false;
    return true;
}

}  // namespace

bool checkRow(const Row& row, bool withPeer) {
    const Case work = row.make();
    const std::vector<float> ours = resultOf(work, work.ours);
    const char* wrong = nullptr;
    // Small masks leave some effects without a place; with the plain loops to compare with, that is their business.
    if (!work.plain && allZero(ours)) wrong = "leaves nothing but zeros";
    if (work.plain && resultOf(work, work.plain) != ours) wrong = "differs from the plain loops";
    if (withPeer && work.peer) {
        const double difference = meanDifference(ours, resultOf(work, work.peer));
        std::printf("%-44s mean difference from the peer %.3f\n", row.name().c_str(), difference);
        if (!(difference <= work.peerSlack)) wrong = "is not what the peer does";
    }
    if (wrong != nullptr) std::printf("%-44s WRONG: %s\n", row.name().c_str(), wrong);
    return wrong == nullptr;
}

}  // namespace qxbench
