#include <chrono>
#include <exception>
#include <iostream>
#include <new>

#include <android/log.h>
#include <portable/log_sink.h>

#include "failure.h"
#include "options.h"
#include "png_file.h"
#include "render.h"
#include "report.h"
#include "style_file.h"

namespace qxrender {

namespace {

void run(const Options& options) {
    // An error is one line; what the library logs on the way is for those who ask.
    if (!options.verbose) portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    if (!options.saveStyle.empty()) writeStyle(options.saveStyle, options.job.style);
    if (options.output.empty()) return;
    Rendering rendering = render(options.job);
    const auto start = std::chrono::steady_clock::now();
    if (options.background) flattenOnto(rendering.picture, *options.background);
    writePng(options.output, rendering.picture);
    const std::chrono::duration<double, std::milli> writing = std::chrono::steady_clock::now() - start;
    rendering.milliseconds.emplace_back("write", writing.count());
    if (options.report) std::cout << formatReport(rendering);
}

int complain(const char* what) {
    std::cerr << "qxrender: " << what << "\n";
    return 2;
}

}  // namespace

}  // namespace qxrender

int main(int argc, char** argv) {
    try {
        const auto options = qxrender::parseOptions(argc, argv);
        if (options) qxrender::run(*options);
        return 0;
    } catch (const qxrender::Failure& failure) {
        return qxrender::complain(failure.what());
    } catch (const std::bad_alloc&) {
        return qxrender::complain("out of memory");
    } catch (const std::exception& error) {
        return qxrender::complain(error.what());
    }
}
