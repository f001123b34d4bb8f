#pragma once

#include <hb.h>

#include <cstdint>
#include <string>
#include <vector>

namespace minikin {

/// How a language wants characters drawn that exist both as text and as colour picture.
enum class EmojiStyle : uint8_t { NONE, DEFAULT, EMOJI, TEXT };

/// One language of a list, completed with its most likely script and region.
class Locale {
public:
    /// @param tag  BCP 47, e.g. "ja", "zh-Hant-TW", "und-Arab", "en-u-em-emoji". Unusable tags give !usable().
    explicit Locale(const std::string& tag);

    bool usable() const { return !mTag.empty(); }
    /// The completed tag; "und" and "und-Xxxx" stay as they are.
    const std::string& tag() const { return mTag; }
    const std::string& language() const { return mLanguage; }
    /// Four letters as in the tag, 0 for none. HarfBuzz's own script numbers would not do: they take Hans and Hant
    /// for the same.
    uint32_t script() const { return mScript; }
    /// The scripts that mScript is made of, as far as they come in mixtures (the East Asian ones), else 0.
    uint32_t scriptParts() const { return mScriptParts; }
    EmojiStyle emojiStyle() const { return mEmojiStyle; }
    hb_language_t hbLanguage() const { return mHbLanguage; }

    bool supportsScript(hb_script_t script) const;

private:
    std::string mTag;
    std::string mLanguage;
    uint32_t mScript = 0;
    uint32_t mScriptParts = 0;
    EmojiStyle mEmojiStyle = EmojiStyle::NONE;
    hb_language_t mHbLanguage = HB_LANGUAGE_INVALID;
};

/// Languages in order of preference, without duplicates, at most kMaxLocales. Immutable.
class LocaleList {
public:
    static constexpr size_t kMaxLocales = 12;

    LocaleList() = default;
    /// @param tags  comma separated; unusable ones are passed over.
    explicit LocaleList(const std::string& tags);

    bool empty() const { return mLocales.empty(); }
    size_t size() const { return mLocales.size(); }
    const Locale& operator[](size_t i) const { return mLocales[i]; }
    /// The first one any language of the list asks for.
    EmojiStyle emojiStyle() const { return mEmojiStyle; }

    /// How well a family made for these languages suits a text that prefers `wanted`: base-5 digits, one for each
    /// wanted language, the most preferred first.
    uint32_t matchScore(const LocaleList& wanted) const;

    /// The first language written in this script, else the first one; HB_LANGUAGE_INVALID for an empty list.
    hb_language_t hbLanguageFor(hb_script_t script) const;

private:
    uint32_t matchDigit(const Locale& wanted) const;

    std::vector<Locale> mLocales;
    uint32_t mScriptParts = 0;
    EmojiStyle mEmojiStyle = EmojiStyle::NONE;
};

}  // namespace minikin
