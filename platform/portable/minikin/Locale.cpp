#include "Locale.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <array>

namespace minikin {

namespace {

enum ScriptPart : uint32_t {
    kBopomofo = 1 << 0,
    kHan = 1 << 1,
    kHangul = 1 << 2,
    kHiragana = 1 << 3,
    kKatakana = 1 << 4,
    kSimplified = 1 << 5,
    kTraditional = 1 << 6,
};

constexpr uint32_t scriptTag(const char (&name)[5]) {
    return HB_TAG(name[0], name[1], name[2], name[3]);
}

/// ISO 15924 has codes for mixtures of scripts; a font for the mixture serves every part of it.
uint32_t partsOf(uint32_t script) {
    struct Entry {
        uint32_t script;
        uint32_t parts;
    };
    static constexpr std::array<Entry, 11> kEntries = {{
        {scriptTag("Bopo"), kBopomofo},
        {scriptTag("Hang"), kHangul},
        {scriptTag("Hani"), kHan},
        {scriptTag("Hira"), kHiragana},
        {scriptTag("Kana"), kKatakana},
        {scriptTag("Hanb"), kHan | kBopomofo},
        {scriptTag("Hans"), kHan | kSimplified},
        {scriptTag("Hant"), kHan | kTraditional},
        {scriptTag("Hrkt"), kHiragana | kKatakana},
        {scriptTag("Jpan"), kHan | kHiragana | kKatakana},
        {scriptTag("Kore"), kHan | kHangul},
    }};
    for (const Entry& entry : kEntries) {
        if (entry.script == script) return entry.parts;
    }
    return 0;
}

bool holdsAll(uint32_t parts, uint32_t wanted) {
    return wanted != 0 && (parts & wanted) == wanted;
}

/// Runs an ICU function of the form f(buffer, capacity, &error); "" when it fails or its result does not fit.
template <typename F>
std::string icuText(F&& call) {
    std::array<char, ULOC_FULLNAME_CAPACITY> buffer{};
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length = call(buffer.data(), static_cast<int32_t>(buffer.size()), &error);
    if (U_FAILURE(error) || error == U_STRING_NOT_TERMINATED_WARNING || length <= 0) return {};
    return std::string(buffer.data(), static_cast<size_t>(length));
}

/// ICU's name of the language; false when the text is none. "und" and "und-Xxxx" have no language in ICU's names:
/// they become "" and "_Xxxx", which only the length of what was understood tells from nonsense.
bool icuName(const std::string& tag, std::string* name) {
    std::array<char, ULOC_FULLNAME_CAPACITY> buffer{};
    UErrorCode error = U_ZERO_ERROR;
    int32_t understood = 0;
    uloc_forLanguageTag(tag.c_str(), buffer.data(), static_cast<int32_t>(buffer.size()), &understood, &error);
    if (U_FAILURE(error) || error == U_STRING_NOT_TERMINATED_WARNING || understood == 0) return false;
    *name = buffer.data();
    return true;
}

EmojiStyle emojiStyleOf(const std::string& name, uint32_t script) {
    const std::string keyword = icuText([&](char* buffer, int32_t capacity, UErrorCode* error) {
        return uloc_getKeywordValue(name.c_str(), "em", buffer, capacity, error);
    });
    if (keyword == "emoji") return EmojiStyle::EMOJI;
    if (keyword == "text") return EmojiStyle::TEXT;
    if (keyword == "default") return EmojiStyle::DEFAULT;
    if (script == scriptTag("Zsye")) return EmojiStyle::EMOJI;
    if (script == scriptTag("Zsym")) return EmojiStyle::TEXT;
    return EmojiStyle::NONE;
}

/// Without blanks around it, and with the one separator that language tags have; names with "_" are in use too.
std::string normalised(std::string tag) {
    const size_t start = std::min(tag.find_first_not_of(' '), tag.size());
    tag = tag.substr(start, tag.find_last_not_of(' ') + 1 - start);
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

}  // namespace

Locale::Locale(const std::string& tag) {
    std::string name;
    if (!icuName(normalised(tag), &name)) return;

    const auto part = [&name](auto getter) {
        return icuText([&](char* buffer, int32_t capacity, UErrorCode* error) {
            return getter(name.c_str(), buffer, capacity, error);
        });
    };
    const bool known = !part(uloc_getLanguage).empty();
    // Likely subtags of an unknown language would make one up: a family for "any language in Arabic script" must
    // not turn into an Egyptian one.
    if (known) {
        const std::string likely = icuText([&](char* buffer, int32_t capacity, UErrorCode* error) {
            return uloc_addLikelySubtags(name.c_str(), buffer, capacity, error);
        });
        if (!likely.empty()) name = likely;
    }

    mLanguage = known ? part(uloc_getLanguage) : "und";
    // Four letters and more are reserved or registered one by one; no language has such a code.
    if (mLanguage.size() > 3) return;

    const std::string script = part(uloc_getScript);
    if (script.size() == 4) mScript = HB_TAG(script[0], script[1], script[2], script[3]);
    mScriptParts = partsOf(mScript);
    mEmojiStyle = emojiStyleOf(name, mScript);
    mTag = icuText([&](char* buffer, int32_t capacity, UErrorCode* error) {
        return uloc_toLanguageTag(name.c_str(), buffer, capacity, false, error);
    });
    mHbLanguage = hb_language_from_string(mTag.data(), static_cast<int>(mTag.size()));
}

bool Locale::supportsScript(hb_script_t script) const {
    const auto tag = static_cast<uint32_t>(script);
    return tag == mScript || holdsAll(mScriptParts, partsOf(tag));
}

LocaleList::LocaleList(const std::string& tags) {
    for (size_t start = 0; start <= tags.size() && mLocales.size() < kMaxLocales;) {
        const size_t end = std::min(tags.find(',', start), tags.size());
        Locale locale(tags.substr(start, end - start));
        start = end + 1;
        const bool duplicate = std::any_of(mLocales.begin(), mLocales.end(),
                                           [&](const Locale& known) { return known.tag() == locale.tag(); });
        if (!locale.usable() || duplicate) continue;
        mScriptParts |= locale.scriptParts();
        if (mEmojiStyle == EmojiStyle::NONE) mEmojiStyle = locale.emojiStyle();
        mLocales.push_back(std::move(locale));
    }
}

uint32_t LocaleList::matchDigit(const Locale& wanted) const {
    bool sameLanguage = false;
    bool sameStyle = false;
    bool sameScript = holdsAll(mScriptParts, wanted.scriptParts());
    for (const Locale& own : mLocales) {
        sameLanguage |= own.language() == wanted.language();
        sameStyle |= own.emojiStyle() != EmojiStyle::NONE && own.emojiStyle() == wanted.emojiStyle();
        sameScript |= own.script() != 0 && own.script() == wanted.script();
    }
    if (sameLanguage && sameStyle) return 4;
    if (sameLanguage && sameScript) return 3;
    if (sameStyle) return 2;
    return sameScript ? 1 : 0;
}

uint32_t LocaleList::matchScore(const LocaleList& wanted) const {
    uint32_t score = 0;
    for (const Locale& locale : wanted.mLocales) score = score * 5 + matchDigit(locale);
    return score;
}

hb_language_t LocaleList::hbLanguageFor(hb_script_t script) const {
    if (mLocales.empty()) return HB_LANGUAGE_INVALID;
    for (const Locale& locale : mLocales) {
        if (locale.supportsScript(script)) return locale.hbLanguage();
    }
    return mLocales.front().hbLanguage();
}

}  // namespace minikin
