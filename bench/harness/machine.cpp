#include "harness/machine.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <thread>

#include "peers/peers.h"
#include "pixel/kernel/rows.h"

namespace qxbench {
namespace {

std::string processorName() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);)
        if (line.compare(0, 10, "model name") == 0) return line.substr(line.find(':') + 2);
    return "unknown";
}

std::string loadAverages() {
    double loads[3];
    if (getloadavg(loads, 3) != 3) return "unknown";
    char text[64];
    std::snprintf(text, sizeof text, "%.2f %.2f %.2f (1, 5, 15 minutes)", loads[0], loads[1], loads[2]);
    return text;
}

std::string today() {
    const std::time_t now = std::time(nullptr);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d", std::localtime(&now));
    return text;
}

std::string compilerName() {
#if defined(__clang__)
    return "Clang " __clang_version__;
#else
    return "GCC " __VERSION__;
#endif
}

}  // namespace

std::vector<std::pair<std::string, std::string>> describeMachine(bool withPeers) {
    std::vector<std::pair<std::string, std::string>> facts = {
        {"processor", processorName() + ", " + std::to_string(std::thread::hardware_concurrency()) + " cores"},
        {"load", loadAverages()},
        {"compiler", compilerName()},
        {"flags", QX_BENCH_FLAGS},
        {"pixel rows", QxFontEffect::kernel::pixelRows().name},
        {"date", today()},
    };
    if (withPeers) facts.emplace_back("peers", peers::description());
    return facts;
}

}  // namespace qxbench
