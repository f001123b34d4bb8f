// Draws numbered scenes of random effects over stored coverage and prints their checksums, so that builds can be
// compared with each other and with the checksums kept beside this file.
//
//   qx_checksums COVERAGE.pgm                   a line for every effect alone and for every 32 random stacks
//   qx_checksums COVERAGE.pgm --only TYPE N     scene N of one effect type (0: random stacks), alone
#include <android/log.h>
#include <portable/log_sink.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "golden/random_stack.h"

namespace {

using namespace QxFontEffect::test;

constexpr uint32_t kScenesPerEffect = 32;
constexpr uint32_t kStacks = 256;
constexpr uint32_t kStacksPerLine = 32;

uint32_t checksum(uint32_t first, uint32_t end, int type, const Coverage& stored) {
    uint32_t crc = 0;
    for (uint32_t number = first; number < end; ++number) crc = crc32(crc, drawScene(number, type, stored));
    return crc;
}

void printAll(const Coverage& stored) {
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12})
        std::printf("effect %d %08x\n", type, checksum(0, kScenesPerEffect, type, stored));
    for (uint32_t first = 0; first < kStacks; first += kStacksPerLine)
        std::printf("stacks %u %08x\n", first, checksum(first, first + kStacksPerLine, 0, stored));
}

}  // namespace

int main(int argc, char** argv) {
    portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    const Coverage stored = argc > 1 ? readCoverage(argv[1]) : Coverage();
    const bool one = argc == 5 && std::strcmp(argv[2], "--only") == 0;
    if (stored.pixels.empty() || (argc != 2 && !one)) {
        std::fprintf(stderr, "usage: qx_checksums COVERAGE.pgm [--only TYPE N]\n");
        return 2;
    }
    if (one) {
        const auto number = static_cast<uint32_t>(std::atoi(argv[4]));
        std::printf("%08x\n", checksum(number, number + 1, std::atoi(argv[3]), stored));
    } else {
        printAll(stored);
    }
    return 0;
}
