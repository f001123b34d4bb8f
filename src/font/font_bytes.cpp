#include "font/font_bytes.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <new>

#include "base/no_throw.h"
#include "base/platform_log.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxFontManager";

struct Mapping {
    void* data = nullptr;
    size_t size = 0;
};

// The tag stands where the format belongs, so the line reads only the tag and the rest goes unused. That keeps the
// paths of an application's fonts out of the device log, and log readers know the line in this form.
void logUnreadable(const char* message, const char* path) {
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-extra-args"
#endif
    logDebug(kTag, kTag, message, path);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
}

Mapping mapDescriptor(int descriptor, const char* path) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) {
        logUnreadable("Failed to stat font file %s", path);
        return {};
    }
    if (status.st_size <= 0 || static_cast<uint64_t>(status.st_size) > PTRDIFF_MAX) return {};
    const size_t size = static_cast<size_t>(status.st_size);
    void* const data = mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
    if (data == MAP_FAILED) return {};
    return {data, size};
}

}  // namespace

std::shared_ptr<const FontBytes> FontBytes::mapFile(const char* path) {
    Mapping mapping;
    // Not to block: opening a named pipe would wait for its writer.
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        logUnreadable("Failed to open %s as a font", path);
    } else {
        mapping = mapDescriptor(descriptor, path);
        close(descriptor);
    }
    auto* const bytes = new (std::nothrow) FontBytes(Kind::kMapping, mapping.data, mapping.size);
    if (bytes == nullptr && mapping.data != nullptr) munmap(mapping.data, mapping.size);
    return share(bytes);
}

std::shared_ptr<const FontBytes> FontBytes::adopt(std::unique_ptr<char[]> array, size_t size) {
    auto* const bytes = new (std::nothrow) FontBytes(Kind::kArray, array.get(), size);
    if (bytes != nullptr) array.release();
    return share(bytes);
}

std::shared_ptr<const FontBytes> FontBytes::share(FontBytes* bytes) {
    std::shared_ptr<const FontBytes> shared;
    // A failing reset deletes what it was given.
    if (bytes != nullptr) withoutThrowing([&] { shared.reset(bytes); });
    return shared;
}

FontBytes::~FontBytes() {
    if (mData == nullptr) return;
    if (mKind == Kind::kMapping) {
        munmap(mData, mSize);
    } else {
        delete[] static_cast<char*>(mData);
    }
}

}  // namespace QxFontEffect
