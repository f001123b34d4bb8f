#include "font/FontManager.h"

#include <map>
#include <new>
#include <string>
#include <utility>

#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "base/immortal.h"
#include "base/no_throw.h"
#include "base/platform_log.h"
#include "base/process_lock.h"
#include "font/QxFontManagerImpl.h"
#include "font/user_font_style.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxFontManager";

// Renders of different text objects ask for fonts from different threads. Nothing calls out of the fonts under it.
using FontLock = ProcessLock<FontManager>;

// Runs one operation of a manager under the lock. Not created: error 8 with the caller's line.
template <typename Operation>
bool withImpl(QxFontManagerImpl* const& impl, int line, Operation&& operation) {
    const FontLock lock;
    if (impl == nullptr) return failWith(kTag, 8, line);
    bool result = false;
    return withoutThrowing([&] { result = operation(*impl); }) && result;
}

}  // namespace

/// Takes the process's manager down when the process ends.
class FontManager::ExitGuard {
public:
    explicit ExitGuard(FontManager* manager) : mManager(manager) {}
    ~ExitGuard() { mManager->takeDown(true); }

private:
    FontManager* const mManager;
};

FontManager* FontManager::GetInstance() {
    static Immortal<FontManager> instance;
    static const ExitGuard guard(&instance.value);
    return &instance.value;
}

FontManager::FontManager() : mImpl(new (std::nothrow) QxFontManagerImpl) {}

FontManager::~FontManager() {
    takeDown(false);
}

void FontManager::takeDown(bool keepFonts) {
    const FontLock lock;
    logDebug(kTag, "~FontManager(%p)", static_cast<void*>(mImpl));
    if (mImpl == nullptr) return;
    if (keepFonts) {
        // Threads of the VM may still draw while the process ends; what they read stays mapped.
        static Immortal<std::map<std::string, std::shared_ptr<android::MinikinFontSkia>>> kept;
        kept.value.swap(mImpl->fonts);
    }
    mImpl->ClearFontMaps();
    mImpl->ClearFontFamilies();
    delete mImpl;
    mImpl = nullptr;
}

bool FontManager::IsExisting(const char* path, int ttcIndex) {
    return withImpl(mImpl, 93, [&](QxFontManagerImpl& impl) { return impl.isExisting(path, ttcIndex); });
}

bool FontManager::AddMinikinFont(const char* path, char* buffer, unsigned int size, int ttcIndex, bool checkExisting) {
    std::unique_ptr<char[]> owned(buffer);
    return withImpl(mImpl, 98, [&](QxFontManagerImpl& impl) {
        return impl.addFont(path, std::move(owned), size, ttcIndex, checkExisting);
    });
}

bool FontManager::AddMinikinFont(QxString* path, char* buffer, unsigned int size, int ttcIndex, bool checkExisting) {
    std::unique_ptr<char[]> owned(buffer);
    return withImpl(mImpl, 105, [&](QxFontManagerImpl& impl) {
        std::string utf8;
        if (path != nullptr && !utf8Of(path, &utf8)) return false;
        return impl.addFont(utf8.c_str(), std::move(owned), size, ttcIndex, checkExisting);
    });
}

bool FontManager::GetMinikinFont(std::shared_ptr<minikin::MinikinFont>& out, QxString* path, int ttcIndex) {
    return withImpl(mImpl, 113, [&](QxFontManagerImpl& impl) {
        std::string utf8;
        if (!utf8Of(path, &utf8)) return false;
        std::shared_ptr<android::MinikinFontSkia> font = impl.findFont(utf8, ttcIndex);
        if (font == nullptr) return false;
        out = std::move(font);
        return true;
    });
}

bool FontManager::BuildMinikinFamily(QxFontFamily* family) {
    return withImpl(mImpl, 124, [&](QxFontManagerImpl& impl) { return impl.buildFamily(family); });
}

bool FontManager::LoadMinikinFontFamily(unsigned int localeListId) {
    return withImpl(mImpl, 128, [&](QxFontManagerImpl& impl) { return impl.loadFamily(localeListId); });
}

bool FontManager::IsSystemFontFamiliesAlreadySet() {
    return withImpl(mImpl, 132, [](QxFontManagerImpl& impl) { return impl.systemFamiliesSet; });
}

bool FontManager::SetSystemFontFamilies(List* families) {
    return withImpl(mImpl, 136, [&](QxFontManagerImpl& impl) {
        if (impl.systemFamiliesSet) return true;
        impl.ClearFontFamilies();
        impl.systemFamilies = families;
        impl.systemFamiliesSet = true;
        return true;
    });
}

bool FontManager::GetMinikinFontFamilies(QxString* familyName, std::vector<std::shared_ptr<minikin::FontFamily>>& out,
                                         QxString* userFont, int& weight) {
    return withImpl(mImpl, 147, [&](QxFontManagerImpl& impl) {
        const bool verbose = QxLog::IsAllLogEnable();
        if (verbose) {
            logDebug(kTag, "GetMinikinFontFamilies >>> GetMinikinFontFamilies");
            logDebug(kTag, "GetMinikinFontFamilies - userFont[%s]", QxLog::ConvertLog(userFont));
            logDebug(kTag, "GetMinikinFontFamilies - familyFont[%s]", QxLog::ConvertLog(familyName));
        }
        if (userFont != nullptr) {
            const UserFontStyle style = userFontStyle(*userFont, familyName, weight);
            weight = style.weight;
            // The system's own families hold their Roboto in all its weights.
            if (!isSystemRoboto(*userFont)) impl.appendUserFamily(&out, *userFont, weight, style.italic);
        }
        impl.appendSystemFamilies(&out);
        if (verbose) logDebug(kTag, "GetMinikinFontFamilies <<< GetMinikinFontFamilies");
        return true;
    });
}

}  // namespace QxFontEffect
