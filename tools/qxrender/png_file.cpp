#include "png_file.h"

#include <png.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "failure.h"

namespace qxrender {

namespace {

/// libpng's bytes are R, G, B, A; ours are one ARGB value.
std::vector<uint8_t> toRgba(const Picture& picture) {
    std::vector<uint8_t> bytes;
    bytes.reserve(picture.pixels.size() * 4);
    for (const uint32_t pixel : picture.pixels)
        for (const int shift : {16, 8, 0, 24}) bytes.push_back(static_cast<uint8_t>(pixel >> shift));
    return bytes;
}

[[noreturn]] void cannot(const char* verb, const std::string& path, const std::string& why) {
    throw Failure(std::string("cannot ") + verb + " '" + path + "': " + why);
}

bool isRegularOrNew(const std::string& path) {
    std::FILE* existing = std::fopen(path.c_str(), "rb");
    if (existing == nullptr) return true;
    const bool seekable = std::fseek(existing, 0, SEEK_END) == 0;
    std::fclose(existing);
    return seekable;
}

}  // namespace

void writePng(const std::string& path, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    const std::vector<uint8_t> bytes = toRgba(picture);

    // A device or pipe cannot be renamed onto; everything else is written beside its name first.
    const std::string target = isRegularOrNew(path) ? path + ".part" + std::to_string(getpid()) : path;
    errno = 0;
    if (!png_image_write_to_file(&image, target.c_str(), 0, bytes.data(), 0, nullptr)) {
        const std::string why = errno != 0 ? std::strerror(errno) : image.message;
        if (target != path) std::remove(target.c_str());
        cannot("write", path, why);
    }
    if (target != path && std::rename(target.c_str(), path.c_str()) != 0) {
        const std::string why = std::strerror(errno);
        std::remove(target.c_str());
        cannot("write", path, why);
    }
}

Picture readPng(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    errno = 0;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        cannot("read", path, errno != 0 ? std::strerror(errno) : image.message);
    image.format = PNG_FORMAT_RGBA;
    if (image.width > 16384 || image.height > 16384) {
        png_image_free(&image);
        cannot("read", path, "larger than 16384 x 16384 pixels");
    }
    std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr)) cannot("read", path, image.message);

    Picture picture;
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    picture.pixels.reserve(bytes.size() / 4);
    for (size_t i = 0; i < bytes.size(); i += 4)
        picture.pixels.push_back(static_cast<uint32_t>(bytes[i + 3]) << 24 | static_cast<uint32_t>(bytes[i]) << 16 |
                                 static_cast<uint32_t>(bytes[i + 1]) << 8 | bytes[i + 2]);
    return picture;
}

}  // namespace qxrender
