#include "harness/report.h"

#include <cstdio>
#include <fstream>

#include <nlohmann/json.hpp>

#include "rows/rows.h"

namespace qxbench {
namespace {

constexpr int kLeastRuns = 7;

double nsPerPixel(const Row& row, const Figure& figure) {
    return figure.median * 1e9 / static_cast<double>(row.pixels);
}

/// Time and ratio of another contender. Its runs are named where a slow one had fewer.
void printOther(const std::optional<Figure>& figure, double ratio) {
    if (!figure) {
        std::printf("  %10s %7s", "-", "-");
        return;
    }
    std::printf("  %10.3f %7.3f", figure->median * 1e3, ratio);
    if (figure->runs < kLeastRuns) std::printf(" (%d)", figure->runs);
}

nlohmann::ordered_json jsonOf(const Figure& figure) {
    return {{"median_ms", figure.median * 1e3}, {"spread", figure.spread}, {"runs", figure.runs}};
}

}  // namespace

void Report::machine(const std::vector<std::pair<std::string, std::string>>& facts) {
    mFacts = facts;
    for (const auto& [name, value] : facts) std::printf("%-10s  %s\n", name.c_str(), value.c_str());
}

void Report::masks(const std::vector<Mask>& masks) {
    for (const Mask& mask : masks)
        std::printf("mask %-5s  %d x %d, ink in %d x %d, on %.0f%% of the pixels\n", mask.name.c_str(), mask.width,
                    mask.height, mask.inkRight - mask.inkLeft, mask.inkBottom - mask.inkTop, 100.0 * mask.inkShare);
}

void Report::tableHead() const {
    std::printf("\n%-32s %-4s %6s  %10s %6s %8s %8s", "effect", "mask", "radius", "median ms", "spread", "ns/px",
                "MP/s");
    if (mPlain) std::printf("  %10s %7s", "plain ms", "ratio");
    if (mPeers) std::printf("  %10s %7s", "peer ms", "ratio");
    std::printf("\n");
}

void Report::row(const Row& row, const Measurement& measured) {
    const double ns = nsPerPixel(row, measured.ours);
    std::printf("%-32s %-4s %6s  %10.3f %5.0f%% %8.3f %8.0f", row.effect.c_str(), row.mask.c_str(),
                row.parameter.c_str(), measured.ours.median * 1e3, 100.0 * measured.ours.spread, ns, 1e3 / ns);
    if (mPlain) printOther(measured.plain, measured.plainRatio);
    if (mPeers) printOther(measured.peer, measured.peerRatio);
    if (measured.ours.runs < kLeastRuns) std::printf("  [%d runs]", measured.ours.runs);
    std::printf("\n");
    std::fflush(stdout);
    mEntries.push_back({row, measured});
}

void Report::pictureSum() {
    double whole = 0.0, parts = 0.0;
    for (const Entry& entry : mEntries) {
        if (entry.row.effect == kPicture) whole = entry.measured.ours.median;
        if (entry.row.effect.rfind(kPartPrefix, 0) == 0) parts += entry.measured.ours.median;
    }
    if (whole == 0.0 || parts == 0.0) return;
    figure("whole picture", "sum of its parts", parts * 1e3, "ms");
    figure("whole picture", "whole / sum of its parts", whole / parts, "");
}

void Report::figure(const std::string& group, const std::string& name, double value, const std::string& unit) {
    if (mExtras.empty() || mExtras.back().group != group) std::printf("\n%s\n", group.c_str());
    std::printf("  %-58s %12.3f %s\n", name.c_str(), value, unit.c_str());
    std::fflush(stdout);
    mExtras.push_back({group, name, value, unit});
}

bool Report::writeJson(const std::string& path) const {
    nlohmann::ordered_json document;
    for (const auto& [name, value] : mFacts) document["machine"][name] = value;
    for (const Entry& entry : mEntries) {
        nlohmann::ordered_json row = {
            {"effect", entry.row.effect},          {"mask", entry.row.mask},
            {"radius", entry.row.parameter},       {"pixels", entry.row.pixels},
            {"ours", jsonOf(entry.measured.ours)}, {"ns_per_pixel", nsPerPixel(entry.row, entry.measured.ours)}};
        if (entry.measured.plain) {
            row["plain"] = jsonOf(*entry.measured.plain);
            row["plain_ratio"] = entry.measured.plainRatio;
        }
        if (entry.measured.peer) {
            row["peer"] = jsonOf(*entry.measured.peer);
            row["peer_ratio"] = entry.measured.peerRatio;
        }
        document["rows"].push_back(std::move(row));
    }
    for (const Extra& extra : mExtras)
        document["figures"].push_back(
            {{"group", extra.group}, {"name", extra.name}, {"value", extra.value}, {"unit", extra.unit}});
    std::ofstream file(path);
    file << document.dump(1) << '\n';
    return static_cast<bool>(file.flush());
}

}  // namespace qxbench
