// Style documents: read, written out and read back the same.
#include <string>

#include "failure.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/memory_file.h"
#include "fuzz/quiet_log.h"
#include "style_file.h"

using QxFontEffect::test::MemoryFile;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QxFontEffect::test::quietStreams();  // a document may name standard input
    std::string written;
    try {
        written = qxrender::formatStyle(qxrender::readStyle(MemoryFile(data, size).path()));
    } catch (const qxrender::Failure&) {
        return 0;  // refused with a message, as it should be
    }
    FUZZ_CHECK(qxrender::formatStyle(qxrender::readStyle(MemoryFile(written).path())) == written);
    return 0;
}
