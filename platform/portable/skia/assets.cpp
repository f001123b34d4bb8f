#include "portable/assets.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <mutex>
#include <new>

struct AAssetManager {
    std::string directory;
};

struct AAsset {
    FILE* file;
    off_t length;
};

namespace {

struct DefaultDirectory {
    std::mutex mutex;
    std::string path = ".";
};

DefaultDirectory& defaultDirectory() {
    static DefaultDirectory* directory = new DefaultDirectory;  // never destroyed: managers may be made at exit
    return *directory;
}

/// Assets are named from the root of their directory and never lead out of it.
bool staysInside(const std::string& name) {
    if (name.empty() || name.front() == '/') return false;
    const std::string framed = "/" + name + "/";
    return framed.find("/../") == std::string::npos;
}

bool knownMode(int mode) {
    return mode >= AASSET_MODE_RANDOM && mode <= AASSET_MODE_BUFFER;
}

}  // namespace

extern "C" {

AAsset* AAssetManager_open(AAssetManager* manager, const char* filename, int mode) {
    if (manager == nullptr || filename == nullptr || !knownMode(mode) || !staysInside(filename)) return nullptr;
    // A pipe that nobody writes to would keep a plain open waiting.
    const int descriptor = open((manager->directory + "/" + filename).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return nullptr;
    struct stat status = {};
    const bool regular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    FILE* file = regular ? fdopen(descriptor, "rb") : nullptr;
    if (file == nullptr) {
        close(descriptor);
        return nullptr;
    }
    AAsset* asset = new (std::nothrow) AAsset{file, status.st_size};
    if (asset == nullptr) std::fclose(file);
    return asset;
}

off_t AAsset_getLength(AAsset* asset) {
    return asset == nullptr ? 0 : asset->length;
}

int AAsset_read(AAsset* asset, void* buffer, size_t count) {
    if (asset == nullptr || buffer == nullptr) return -1;
    // The result is an int, so a single read stops short of what an int can say.
    constexpr size_t kMost = 1 << 30;
    const size_t read = std::fread(buffer, 1, count < kMost ? count : kMost, asset->file);
    return read == 0 && std::ferror(asset->file) != 0 ? -1 : static_cast<int>(read);
}

void AAsset_close(AAsset* asset) {
    if (asset == nullptr) return;
    std::fclose(asset->file);
    delete asset;
}

}  // extern "C"

namespace portable {

AAssetManager* newAssetManager(const std::string& directory) {
    return new AAssetManager{directory};
}

void deleteAssetManager(AAssetManager* manager) {
    delete manager;
}

void setAssetDirectory(const std::string& directory) {
    const std::lock_guard<std::mutex> lock(defaultDirectory().mutex);
    defaultDirectory().path = directory;
}

AAssetManager* newDefaultAssetManager() {
    const std::lock_guard<std::mutex> lock(defaultDirectory().mutex);
    return newAssetManager(defaultDirectory().path);
}

}  // namespace portable
