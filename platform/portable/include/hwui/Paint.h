#pragma once

#include <SkFont.h>
#include <SkPaint.h>

#include <cstdint>
#include <string>

#include <minikin/FamilyVariant.h>

namespace android {

struct Typeface;

/// Colour, blending and font of a text. A value: copies are independent of each other.
///
/// Starts as opaque black, filled, drawn over, 12 px, aliased, left aligned, without flags or languages.
class Paint : public SkPaint {
public:
    enum Align { kLeft_Align, kCenter_Align, kRight_Align };

    Paint();
    Paint(const Paint&);
    ~Paint();
    Paint& operator=(const Paint&);

    void reset();

    SkFont& getSkFont() { return mFont; }
    const SkFont& getSkFont() const { return mFont; }

    /// In em: added to every cluster, half on each side.
    void setLetterSpacing(float letterSpacing) { mLetterSpacing = letterSpacing; }
    float getLetterSpacing() const { return mLetterSpacing; }

    /// In pixels: added to every space.
    void setWordSpacing(float wordSpacing) { mWordSpacing = wordSpacing; }
    float getWordSpacing() const { return mWordSpacing; }

    /// OpenType features in CSS notation, comma separated.
    void setFontFeatureSettings(const std::string& settings) { mFontFeatureSettings = settings; }
    std::string getFontFeatureSettings() const { return mFontFeatureSettings; }

    /// From minikin::registerLocaleList; 0 for no languages.
    void setMinikinLocaleListId(uint32_t id) { mLocaleListId = id; }
    uint32_t getMinikinLocaleListId() const { return mLocaleListId; }

    void setFamilyVariant(minikin::FamilyVariant variant) { mFamilyVariant = variant; }
    minikin::FamilyVariant getFamilyVariant() const { return mFamilyVariant; }

    void setTextAlign(Align align) { mAlign = align; }
    Align getTextAlign() const { return mAlign; }

    /// Borrowed: must outlive the paint's use.
    void setAndroidTypeface(Typeface* typeface) { mTypeface = typeface; }
    const Typeface* getAndroidTypeface() const { return mTypeface; }

    bool isUnderline() const { return mUnderline; }
    void setUnderline(bool underline) { mUnderline = underline; }
    bool isStrikeThru() const { return mStrikeThru; }
    void setStrikeThru(bool strikeThru) { mStrikeThru = strikeThru; }
    bool isDevKern() const { return mDevKern; }
    void setDevKern(bool devKern) { mDevKern = devKern; }

    /// Hides SkPaint's: the edging of the glyphs follows.
    void setAntiAlias(bool antiAlias);

    /// The bits of android.graphics.Paint.getFlags(); unknown ones are ignored. Overwrites every switch it names.
    void setJavaFlags(uint32_t flags);
    uint32_t getJavaFlags() const;

private:
    SkFont mFont;
    float mLetterSpacing = 0.0f;
    float mWordSpacing = 0.0f;
    std::string mFontFeatureSettings;
    uint32_t mLocaleListId = 0;
    minikin::FamilyVariant mFamilyVariant = minikin::FamilyVariant::DEFAULT;
    Align mAlign = kLeft_Align;
    Typeface* mTypeface = nullptr;
    bool mUnderline = false;
    bool mStrikeThru = false;
    bool mDevKern = false;
};

}  // namespace android
