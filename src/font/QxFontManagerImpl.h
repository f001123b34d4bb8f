#pragma once

#include <hwui/MinikinSkia.h>
#include <minikin/FontFamily.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "font/font_bytes.h"

namespace QxFontEffect {

class List;
class QxString;
struct QxFontFamily;

/// The fonts of the process: mapped files, registered fonts, and the system's families. Not locked; `FontManager`
/// is.
///
/// A font is known by its path (only a name when its bytes were handed over) and its index in a collection. Fonts
/// share their bytes with the maps, so clearing the maps never pulls bytes from under a family that is still in use.
class QxFontManagerImpl {
public:
    QxFontManagerImpl() = default;
    QxFontManagerImpl(const QxFontManagerImpl&) = delete;
    QxFontManagerImpl& operator=(const QxFontManagerImpl&) = delete;
    ~QxFontManagerImpl();

    bool isExisting(const char* path, int ttcIndex) const;

    /// Registers one font; the first registration of a name wins. See FontManager::AddMinikinFont.
    bool addFont(const char* path, std::unique_ptr<char[]> buffer, unsigned int size, int ttcIndex, bool checkExisting);

    /// The registered font, or null. Never loads.
    std::shared_ptr<android::MinikinFontSkia> findFont(const std::string& path, int ttcIndex) const;

    /// Registers every font of a family until the first failure.
    bool buildFamily(const QxFontFamily* family);

    /// Builds the first family of the locale list that is not loaded yet.
    ///
    /// A family that cannot be built stays "not loaded" and is tried again next time, ahead of later ones.
    /// @return whether there was such a family, built or not.
    bool loadFamily(uint32_t localeListId);

    /// Appends one family made of a single user font, if that font is registered.
    void appendUserFamily(std::vector<std::shared_ptr<minikin::FontFamily>>* out, const QxString& path, int weight,
                          bool italic) const;

    /// Appends the loaded system families in their order.
    void appendSystemFamilies(std::vector<std::shared_ptr<minikin::FontFamily>>* out) const;

    /// Releases the system families and forgets that they were set.
    void ClearFontFamilies();
    /// Drops all fonts and buffers.
    void ClearFontMaps();

    double totalBufferMB = 0;  ///< size of all mapped files, in units of 1,024,000 bytes
    std::map<std::string, std::shared_ptr<const FontBytes>> fontBuffers;     ///< files mapped here, by path
    std::map<std::string, std::shared_ptr<android::MinikinFontSkia>> fonts;  ///< by path and index
    List* systemFamilies = nullptr;                                          ///< QxFontFamily records, owned
    bool systemFamiliesSet = false;

private:
    std::shared_ptr<const FontBytes> mappedFile(const char* path);
    void appendSystemFamily(std::vector<std::shared_ptr<minikin::FontFamily>>* out, const QxFontFamily& family) const;
};

/// The string's UTF-8 form. False for null, for a string that is not constructed, and for one whose size comes out
/// negative.
bool utf8Of(const QxString* text, std::string* utf8);

}  // namespace QxFontEffect
