#include "font/user_font_style.h"

#include <cwchar>

#include "base/QxString.h"

namespace QxFontEffect {

namespace {

constexpr wchar_t kBold[] = L"-Bold";
constexpr wchar_t kItalicAfterBold[] = L"Italic";

// A mark counts behind the first character: a file named "-Bold.ttf" in no directory is a name, not a style.
bool marked(const QxString& path, const char* mark) {
    return path.Find(mark) >= 1;
}

bool markedBold(const QxString& path) {
    const int index = path.Find(kBold);
    if (index < 1) return false;
    const wchar_t* const behind = path.GetPointer() + index + std::wcslen(kBold);
    return std::wcsncmp(behind, kItalicAfterBold, std::wcslen(kItalicAfterBold)) != 0;
}

}  // namespace

UserFontStyle userFontStyle(const QxString& path, const QxString* familyName, int weight) {
    if (marked(path, "-Italic")) return {true, weight};
    if (marked(path, "-Thin")) return {false, 100};
    if (marked(path, "-Light")) return {false, 300};
    if (marked(path, "-Medium")) {
        // The light family has no medium of its own: whoever asks it for emphasis gets bold.
        const bool light = familyName != nullptr && familyName->CompareTo("zvc-roboto-light") == 0;
        return {false, light ? 700 : 500};
    }
    if (marked(path, "-Black")) return {false, 900};
    if (markedBold(path)) return {false, 700};
    return {false, weight};
}

bool isSystemRoboto(const QxString& path) {
    return path.Find("/system/fonts/Roboto-") >= 0;
}

}  // namespace QxFontEffect
