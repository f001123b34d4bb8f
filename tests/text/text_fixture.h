#pragma once

#include <gtest/gtest.h>
#include <minikin/LocaleList.h>

#include <string>
#include <vector>

#include "font/FontManager.h"
#include "support/font_families.h"
#include "support/fonts.h"
#include "text/QxLineInfo.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"

namespace QxFontEffect::test {

/// The system families that the tests of this program share, in this order. A process adopts families once.
enum TestFamily { kDefault, kKorean, kJapanese, kJapaneseToo, kHans, kHant, kArabic, kArabicToo, kFamilies };

/// Hands the families over at first use; the default one is loaded.
inline std::vector<QxFontFamily*>& systemFamilies() {
    static std::vector<QxFontFamily*>& families = *[] {
        const std::string latin = testsupport::fontFile(testsupport::kRobotoRegular);
        const std::string arabic = testsupport::fontFile(testsupport::kNotoNaskh);
        auto* const made = new std::vector<QxFontFamily*>;
        for (const char* locales : {"", "ko", "ja", "ja", "zh-Hans", "zh-Hant", "und-Arab", "und-Arab"})
            made->push_back(newFamily(minikin::registerLocaleList(locales), 0,
                                      {{locales == std::string("und-Arab") ? arabic : latin}}));
        FontManager::GetInstance()->BuildMinikinFamily(made->front());
        made->front()->loaded = 1;
        FontManager::GetInstance()->SetSystemFontFamilies(listOf(*made));
        return made;
    }();
    return families;
}

/// Forgets what texts have loaded since.
inline void unloadFamilies() {
    for (QxFontFamily* family : systemFamilies()) family->loaded = family == systemFamilies()[kDefault] ? 1 : 0;
}

/// A record for a line that starts at (x, y). The bounds reach 20 above and 8 below the baseline.
inline QxLineInfo* newLine(int x, int y, int start, int end, int direction = 1) {
    auto* const line = new QxLineInfo;
    line->x = x;
    line->y = y;
    line->start = start;
    line->end = end;
    line->direction = direction;
    line->bounds = QxRect(x, y - 20, x + 10, y + 8);
    return line;
}

inline bool setLines(QxTextObject* object, const std::vector<QxLineInfo*>& lines) {
    List list;
    list.Construct();
    for (QxLineInfo* line : lines) list.Add(static_cast<void*>(line));
    return object->SetLineInfo(&list);
}

/// A constructed text object with a 32 px antialiased paint and a view of width x height, aligned top left.
class TextScene : public QxTextObject {
public:
    TextScene(const wchar_t* text, int width, int height) {
        systemFamilies();
        Construct();
        android::Paint paint;
        paint.getSkFont().setSize(32);
        paint.setJavaFlags(0x503);
        SetPaint(paint);
        GetView()->gravity = 0x33;
        GetView()->SetBitmapWidth(width);
        GetView()->SetBitmapHeight(height);
        SetText(text);
    }
};

}  // namespace QxFontEffect::test
