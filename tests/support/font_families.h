#pragma once

#include <string>
#include <vector>

#include "base/List.h"
#include "base/QxString.h"
#include "font/QxFontData.h"
#include "font/QxFontFamily.h"

/// Records of system families, as the bridge makes them. Whoever adopts a list owns them.
namespace QxFontEffect::test {

struct FontEntry {
    std::string path;
    int ttcIndex = 0;
    int weight = 400;
    bool italic = false;
};

inline QxFontFamily* newFamily(uint32_t localeListId, int variant, const std::vector<FontEntry>& fonts) {
    auto* const family = new QxFontFamily;
    family->localeListId = localeListId;
    family->variant = variant;
    family->fonts = new List;
    family->fonts->Construct();
    for (const FontEntry& font : fonts) {
        auto* const data = new QxFontData{nullptr, font.ttcIndex, font.weight, font.italic, nullptr};
        data->path = new QxString;
        data->path->Construct(font.path.c_str());
        family->fonts->Add(static_cast<void*>(data));
        family->fonts->Add(static_cast<void*>(nullptr));
    }
    return family;
}

inline List* listOf(const std::vector<QxFontFamily*>& families) {
    auto* const list = new List;
    list->Construct();
    for (QxFontFamily* family : families) list->Add(static_cast<void*>(family));
    return list;
}

}  // namespace QxFontEffect::test
