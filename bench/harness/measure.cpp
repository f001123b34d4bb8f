#include "harness/measure.h"

#include <algorithm>
#include <array>
#include <vector>

#include "harness/clock.h"

namespace qxbench {
namespace {

double medianOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2.0;
}

struct Contender {
    const Step* step = nullptr;
    std::vector<double> runs;
    double spent = 0.0;

    bool takesPart() const { return step != nullptr && *step; }
};

double execute(const Case& work, const Step& step) {
    if (work.reset) work.reset();
    const double start = threadSeconds();
    step();
    return std::max(threadSeconds() - start - clockCost(), 1e-9);
}

double run(const Case& work, Contender& contender, const Effort& effort) {
    std::vector<double> times;
    double total = 0.0;
    do {
        times.push_back(execute(work, *contender.step));
        total += times.back();
    } while (total < effort.runSeconds && static_cast<int>(times.size()) < effort.executionsAtMost);
    contender.spent += total;
    return medianOf(times);
}

Figure figureOf(const std::vector<double>& runs) {
    const auto [fastest, slowest] = std::minmax_element(runs.begin(), runs.end());
    Figure figure;
    figure.median = medianOf(runs);
    figure.spread = (*slowest - *fastest) / figure.median;
    figure.runs = static_cast<int>(runs.size());
    return figure;
}

/// Turn by turn, as far as the slower one went.
double ratioOf(const std::vector<double>& ours, const std::vector<double>& theirs) {
    std::vector<double> quotients;
    for (size_t i = 0; i < std::min(ours.size(), theirs.size()); ++i) quotients.push_back(ours[i] / theirs[i]);
    return medianOf(quotients);
}

}  // namespace

Measurement measure(const Case& work, unsigned wanted, const Effort& effort) {
    std::array<Contender, 3> contenders;
    contenders[0].step = &work.ours;
    if ((wanted & kPlain) != 0) contenders[1].step = &work.plain;
    if ((wanted & kPeer) != 0) contenders[2].step = &work.peer;

    // Once beforehand, to load code and data; it counts towards the time a slow contender may use.
    for (Contender& contender : contenders)
        if (contender.takesPart()) contender.spent = execute(work, *contender.step);
    for (int turn = 0; turn < effort.runs; ++turn)
        for (Contender& contender : contenders)
            if (contender.takesPart() && (turn == 0 || contender.spent < effort.slowSeconds))
                contender.runs.push_back(run(work, contender, effort));

    Measurement measured;
    measured.ours = figureOf(contenders[0].runs);
    if (!contenders[1].runs.empty()) {
        measured.plain = figureOf(contenders[1].runs);
        measured.plainRatio = ratioOf(contenders[0].runs, contenders[1].runs);
    }
    if (!contenders[2].runs.empty()) {
        measured.peer = figureOf(contenders[2].runs);
        measured.peerRatio = ratioOf(contenders[0].runs, contenders[2].runs);
    }
    return measured;
}

}  // namespace qxbench
