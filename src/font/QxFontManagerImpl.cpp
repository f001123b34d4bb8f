#include "font/QxFontManagerImpl.h"

#include <SkStream.h>
#include <SkTypeface.h>

#include <new>
#include <string_view>
#include <utility>

#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "base/list_walk.h"
#include "base/platform_log.h"
#include "font/QxFontData.h"
#include "font/QxFontFamily.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxFontManager";

// Neither 10^6 nor 2^20: the unit of the sizes in the log, kept because the figures are compared between releases.
constexpr double kBytesPerLoggedMB = 1024000.0;

using Families = std::vector<std::shared_ptr<minikin::FontFamily>>;

// Keys end in a NUL of their own, so the key of one path is never the beginning of another's.
std::string bufferKey(std::string_view path) {
    std::string key(path);
    key.push_back('\0');
    return key;
}

// The index is one character counted on from '0'; 10 is ':' and so on.
std::string fontKey(std::string_view path, int ttcIndex) {
    std::string key(path);
    key.push_back(static_cast<char>(static_cast<unsigned char>(48u + static_cast<unsigned int>(ttcIndex))));
    key.push_back('\0');
    return key;
}

// A font with the bytes that its typeface reads in place. The bytes stand first: they go last.
struct FontWithBytes {
    FontWithBytes(std::shared_ptr<const FontBytes> fontBytes, sk_sp<SkTypeface> typeface, std::string_view path,
                  int ttcIndex)
        : bytes(std::move(fontBytes)),
          font(std::move(typeface), bytes->data(), bytes->size(), path, ttcIndex,
               std::vector<minikin::FontVariation>()) {}

    const std::shared_ptr<const FontBytes> bytes;
    android::MinikinFontSkia font;
};

sk_sp<SkTypeface> makeTypeface(const FontBytes& bytes, int ttcIndex) {
    if (ttcIndex < 0) return nullptr;
    std::unique_ptr<SkStreamAsset> stream(new (std::nothrow) SkMemoryStream(bytes.data(), bytes.size(), false));
    if (stream == nullptr) return nullptr;
    return SkTypeface::MakeFromStream(std::move(stream), ttcIndex);
}

minikin::Font makeFont(const std::shared_ptr<minikin::MinikinFont>& font, int weight, bool italic) {
    return minikin::Font::Builder(font)
        .setWeight(static_cast<uint16_t>(weight))
        .setSlant(italic ? minikin::FontStyle::Slant::ITALIC : minikin::FontStyle::Slant::UPRIGHT)
        .build();
}

}  // namespace

bool utf8Of(const QxString* text, std::string* utf8) {
    if (text == nullptr) return false;
    const int size = text->GetUTF8Size();
    if (size < 0) return false;
    // Size 0 happens with characters that have no encoding; one spare byte then is the whole text.
    std::vector<char> bytes(static_cast<size_t>(size) + 1, '\0');
    if (!text->GetUTF8(bytes.data(), size)) return false;
    utf8->assign(bytes.data());
    return true;
}

QxFontManagerImpl::~QxFontManagerImpl() {
    ClearFontMaps();
    ClearFontFamilies();
}

bool QxFontManagerImpl::isExisting(const char* path, int ttcIndex) const {
    if (path == nullptr || *path == '\0') {
        logDebug(kTag, "IsExisting() - path is NULL");
        return false;
    }
    return fonts.count(fontKey(path, ttcIndex)) != 0;
}

bool QxFontManagerImpl::addFont(const char* path, std::unique_ptr<char[]> buffer, unsigned int size, int ttcIndex,
                                bool checkExisting) {
    if (path == nullptr || *path == '\0') {
        logDebug(kTag, "AddMinikinFont() - path is NULL");
        return false;
    }
    if (checkExisting && isExisting(path, ttcIndex)) return true;

    const std::shared_ptr<const FontBytes> bytes =
        buffer != nullptr ? FontBytes::adopt(std::move(buffer), size) : mappedFile(path);
    if (bytes == nullptr || bytes->size() == 0 || bytes->data() == nullptr) {
        logError(kTag, "AddMinikinFont() - Fail to get font");
        return false;
    }
    sk_sp<SkTypeface> typeface = makeTypeface(*bytes, ttcIndex);
    if (typeface == nullptr) {
        logError(kTag, "AddMinikinFont() - Fail to create typeface");
        return false;
    }
    const auto owner = std::make_shared<FontWithBytes>(bytes, std::move(typeface), path, ttcIndex);
    fonts.emplace(fontKey(path, ttcIndex), std::shared_ptr<android::MinikinFontSkia>(owner, &owner->font));
    return true;
}

// A file that cannot be read is remembered like any other: it is not opened again.
std::shared_ptr<const FontBytes> QxFontManagerImpl::mappedFile(const char* path) {
    const std::string key = bufferKey(path);
    const auto known = fontBuffers.find(key);
    if (known != fontBuffers.end()) return known->second;

    std::shared_ptr<const FontBytes> bytes = FontBytes::mapFile(path);
    if (bytes == nullptr) return nullptr;
    fontBuffers.emplace(key, bytes);
    const float sizeMB = static_cast<float>(static_cast<double>(bytes->size()) / kBytesPerLoggedMB);
    totalBufferMB += sizeMB;
    if (QxLog::IsAllLogEnable()) {
        logDebug(kTag, "BUFFER TOTAL SIZE(%.2fMB) <- %s(%.2fMB) ", totalBufferMB, path, sizeMB);
    }
    return bytes;
}

std::shared_ptr<android::MinikinFontSkia> QxFontManagerImpl::findFont(const std::string& path, int ttcIndex) const {
    const auto known = fonts.find(fontKey(path, ttcIndex));
    return known == fonts.end() ? nullptr : known->second;
}

bool QxFontManagerImpl::buildFamily(const QxFontFamily* family) {
    if (family == nullptr || family->fonts == nullptr || family->fonts->GetCount() <= 0) return false;
    return walkList(*family->fonts, false, [this](void* item) {
        const auto* const font = static_cast<const QxFontData*>(item);
        std::string path;
        if (font == nullptr) return true;
        return utf8Of(font->path, &path) && addFont(path.c_str(), nullptr, 0, font->ttcIndex, false);
    });
}

bool QxFontManagerImpl::loadFamily(uint32_t localeListId) {
    if (systemFamilies == nullptr) return false;
    return !walkList(*systemFamilies, false, [this, localeListId](void* item) {
        auto* const family = static_cast<QxFontFamily*>(item);
        if (family == nullptr || family->loaded != 0 || family->localeListId != localeListId) return true;
        family->loaded = buildFamily(family) ? 1 : 0;
        return false;
    });
}

void QxFontManagerImpl::appendUserFamily(Families* out, const QxString& path, int weight, bool italic) const {
    std::string utf8;
    if (!utf8Of(&path, &utf8)) return;
    const std::shared_ptr<android::MinikinFontSkia> font = findFont(utf8, 0);
    if (font == nullptr) return;
    std::vector<minikin::Font> members;
    members.push_back(makeFont(font, weight, italic));
    out->push_back(std::make_shared<minikin::FontFamily>(std::move(members)));
}

void QxFontManagerImpl::appendSystemFamilies(Families* out) const {
    if (systemFamilies == nullptr) return;
    walkList(*systemFamilies, false, [this, out](void* item) {
        const auto* const family = static_cast<const QxFontFamily*>(item);
        if (family != nullptr && family->loaded != 0 && family->fonts != nullptr) appendSystemFamily(out, *family);
        return true;
    });
}

void QxFontManagerImpl::appendSystemFamily(Families* out, const QxFontFamily& family) const {
    std::vector<minikin::Font> members;
    walkList(*family.fonts, false, [this, &members](void* item) {
        const auto* const data = static_cast<const QxFontData*>(item);
        std::string path;
        if (data == nullptr || !utf8Of(data->path, &path)) return true;
        const std::shared_ptr<android::MinikinFontSkia> font = findFont(path, data->ttcIndex);
        if (font != nullptr) members.push_back(makeFont(font, data->weight, data->italic));
        return true;
    });
    if (members.empty()) return;
    const auto variant = static_cast<minikin::FamilyVariant>(static_cast<uint8_t>(family.variant));
    out->push_back(std::make_shared<minikin::FontFamily>(family.localeListId, variant, std::move(members), false));
}

void QxFontManagerImpl::ClearFontFamilies() {
    if (systemFamilies != nullptr) {
        walkList(*systemFamilies, false, [](void* item) {
            releaseFontFamily(static_cast<QxFontFamily*>(item));
            return true;
        });
        delete systemFamilies;
    }
    systemFamilies = nullptr;
    systemFamiliesSet = false;
}

void QxFontManagerImpl::ClearFontMaps() {
    fonts.clear();
    fontBuffers.clear();
    totalBufferMB = 0;
}

}  // namespace QxFontEffect
