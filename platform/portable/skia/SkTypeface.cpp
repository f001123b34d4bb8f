#include "SkTypeface.h"

#include <atomic>
#include <cstring>
#include <new>

#include "face_typeface.h"
#include "font_access.h"

#include FT_TRUETYPE_TABLES_H
#include FT_TRUETYPE_TAGS_H

namespace {

std::atomic<SkFontID> gLastId{0};

/// FreeType allows its faces to live on different threads as long as opening and closing take turns.
std::mutex& libraryMutex() {
    static std::mutex* mutex = new std::mutex;  // outlives every typeface, static ones included
    return *mutex;
}

bool hasTable(FT_Face face, FT_ULong tag) {
    FT_ULong length = 0;
    return FT_Load_Sfnt_Table(face, tag, 0, nullptr, &length) == 0 && length > 0;
}

/// Layout reads the tables in place, so of all that FreeType opens only plain OpenType will do: not the formats of
/// old and not fonts packed for the web.
bool isPlainOpenType(FT_Face face, const void* bytes, size_t size) {
    return FT_IS_SFNT(face) && size >= 4 && std::memcmp(bytes, "wOF", 3) != 0;
}

void closeFace(FT_Face face) {
    const std::lock_guard<std::mutex> lock(libraryMutex());
    FT_Done_Face(face);
}

FT_Face openFace(const void* bytes, size_t size, int index) {
    const std::lock_guard<std::mutex> lock(libraryMutex());
    FT_Library library = portable::fontLibrary();
    FT_Face face = nullptr;
    if (library == nullptr) return nullptr;
    if (FT_New_Memory_Face(library, static_cast<const FT_Byte*>(bytes), static_cast<FT_Long>(size), index, &face) != 0)
        return nullptr;
    if (isPlainOpenType(face, bytes, size)) return face;
    FT_Done_Face(face);
    return nullptr;
}

}  // namespace

SkTypeface::SkTypeface() : mUniqueId(++gLastId) {}

sk_sp<SkTypeface> SkTypeface::MakeFromStream(std::unique_ptr<SkStreamAsset> stream, int index) {
    // Above 16 bits FreeType reads the number of a named variation, below 0 it only looks whether it knows the file.
    if (stream == nullptr || index < 0 || index > 0xFFFF) return nullptr;
    const void* bytes = stream->getMemoryBase();
    const size_t size = stream->getLength();
    if (bytes == nullptr || size == 0 || size > PTRDIFF_MAX) return nullptr;

    FT_Face face = openFace(bytes, size, index);
    if (face == nullptr) return nullptr;
    SkTypeface* typeface = new (std::nothrow) portable::FaceTypeface(std::move(stream), face, index);
    if (typeface == nullptr) closeFace(face);
    return sk_sp<SkTypeface>(typeface);
}

namespace portable {

FT_Library fontLibrary() {
    // Never closed: typefaces of static objects may draw until the very end of the process.
    static FT_Library library = [] {
        FT_Library made = nullptr;
        return FT_Init_FreeType(&made) == 0 ? made : nullptr;
    }();
    return library;
}

FaceTypeface::FaceTypeface(std::unique_ptr<SkStreamAsset> stream, FT_Face face, int index)
    : mStream(std::move(stream)), mIndex(index), mFace(face), mHasColorBitmaps(hasTable(face, TTAG_CBDT)) {}

FaceTypeface::~FaceTypeface() {
    closeFace(mFace);
}

FontAccess accessFont(const SkTypeface* typeface) {
    if (typeface == nullptr) return FontAccess();
    const FaceTypeface& face = *static_cast<const FaceTypeface*>(typeface);
    FontAccess access;
    access.bytes = static_cast<const uint8_t*>(face.stream().getMemoryBase());
    access.size = face.stream().getLength();
    access.index = face.index();
    access.hasColorBitmaps = face.hasColorBitmaps();
    return access;
}

}  // namespace portable
