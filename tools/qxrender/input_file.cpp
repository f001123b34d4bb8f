#include "input_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "failure.h"

namespace qxrender {

std::string readInputFile(const char* what, const std::string& path, size_t limit) {
    const auto fail = [&](const std::string& why) {
        throw Failure(std::string("cannot read ") + what + " '" + path + "': " + why);
    };
    errno = 0;
    const auto close = [](std::FILE* file) {
        if (file != stdin) std::fclose(file);
    };
    const std::unique_ptr<std::FILE, decltype(close)> file(path == "-" ? stdin : std::fopen(path.c_str(), "rb"), close);
    if (file == nullptr) fail(errorText(errno));
    std::string bytes;
    char block[65536];
    while (const size_t count = std::fread(block, 1, sizeof block, file.get())) {
        bytes.append(block, count);
        if (bytes.size() > limit) fail("larger than " + std::to_string(limit) + " bytes");
    }
    if (std::ferror(file.get())) fail(errorText(errno != 0 ? errno : EIO));
    return bytes;
}

}  // namespace qxrender
