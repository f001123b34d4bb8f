#include "available_memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <string>

namespace qxrender {

int64_t availableMemory() {
    int64_t bytes = std::numeric_limits<int64_t>::max();
    std::ifstream info("/proc/meminfo");
    for (std::string line; std::getline(info, line);)
        if (line.compare(0, 13, "MemAvailable:") == 0) bytes = std::stoll(line.substr(13)) * 1024;
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
        bytes = std::min(bytes, static_cast<int64_t>(limit.rlim_cur));
    return bytes;
}

}  // namespace qxrender
