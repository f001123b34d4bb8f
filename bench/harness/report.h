#pragma once

#include <string>
#include <utility>
#include <vector>

#include "harness/measure.h"
#include "harness/row.h"
#include "scene/masks.h"

namespace qxbench {

/// Prints the figures while they come in and keeps them for the JSON file.
class Report {
public:
    Report(bool plain, bool peers) : mPlain(plain), mPeers(peers) {}

    void machine(const std::vector<std::pair<std::string, std::string>>& facts);
    void masks(const std::vector<Mask>& masks);
    void tableHead() const;
    void row(const Row& row, const Measurement& measured);

    /// The parts of the whole picture have been measured after it: prints their sum against it.
    void pictureSum();

    /// A figure outside the table. `group` is printed once, above the first of its kind.
    void figure(const std::string& group, const std::string& name, double value, const std::string& unit);

    /// False when the file cannot be written.
    bool writeJson(const std::string& path) const;

private:
    struct Entry {
        Row row;
        Measurement measured;
    };
    struct Extra {
        std::string group, name;
        double value;
        std::string unit;
    };

    bool mPlain, mPeers;
    std::vector<std::pair<std::string, std::string>> mFacts;
    std::vector<Entry> mEntries;
    std::vector<Extra> mExtras;
};

}  // namespace qxbench
