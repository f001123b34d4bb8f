#include "png_file.h"

#include <png.h>

#include <cerrno>
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

[[noreturn]] void cannotRead(const std::string& path, const std::string& why) {
    throw Failure("cannot read picture '" + path + "': " + why);
}

}  // namespace

std::string encodePng(const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    const std::vector<uint8_t> pixels = toRgba(picture);
    std::string file(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = file.size();
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, nullptr))
        throw Failure(std::string("cannot make a PNG: ") + image.message);
    file.resize(size);
    return file;
}

Picture readPng(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    errno = 0;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        cannotRead(path, errno != 0 ? errorText(errno) : std::string(image.message));
    image.format = PNG_FORMAT_RGBA;
    if (image.width > 16384 || image.height > 16384) {
        png_image_free(&image);
        cannotRead(path, "larger than 16384 x 16384 pixels");
    }
    std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr)) cannotRead(path, image.message);

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
