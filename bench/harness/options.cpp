#include "harness/options.h"

#include <CLI/CLI.hpp>
#include <cstdlib>

#include "peers/peers.h"

namespace qxbench {

Options readOptions(int argc, char** argv) {
    Options options;
    CLI::App app("Measures the effects, their kernels and the text path; times are of one thread.");
    app.add_option("--filter", options.filter, "Only rows whose name (effect mask parameter) contains this");
    app.add_option("--json", options.json, "Also write the figures to this file");
    app.add_flag("--check", options.check,
                 "One quick round on a small mask that compares with the plain loops and the peers instead of timing");
    app.add_flag("--peers", options.peers, "The same work with OpenCV and pixman, in turns, with the ratio");
    app.add_flag("--plain", options.plain, "The same with the plain loops that the tests compare with");
    app.add_option("--runs", options.effort.runs, "Runs a row")->check(CLI::Range(1, 1000))->capture_default_str();
    app.add_option("--run-ms", "Measured milliseconds a run lasts at least")
        ->check(CLI::Range(0.0, 1e6))
        ->each([&options](const std::string& ms) { options.effort.runSeconds = std::atof(ms.c_str()) * 1e-3; });
    try {
        app.parse(argc, argv);
        if (options.peers && peers::description().empty())
            throw CLI::ValidationError("--peers", "built without them; use scripts/bench.sh --peers");
    } catch (const CLI::Error& error) {
        std::exit(app.exit(error));
    }
    return options;
}

}  // namespace qxbench
