#include "font/QxFontFamily.h"

#include "base/List.h"
#include "base/QxString.h"
#include "base/list_walk.h"
#include "font/QxFontData.h"

namespace QxFontEffect {

void releaseFontFamily(QxFontFamily* family) {
    if (family == nullptr) return;
    if (family->fonts != nullptr) {
        walkList(*family->fonts, false, [](void* item) {
            auto* font = static_cast<QxFontData*>(item);
            if (font == nullptr) return true;
            delete font->path;
            delete font->auxName;
            delete font;
            return true;
        });
        delete family->fonts;
    }
    delete family;
}

}  // namespace QxFontEffect
