#include "LineBuilder.h"

#include <algorithm>

#include "Characters.h"
#include "LocaleRegistry.h"
#include "ScriptRuns.h"

namespace minikin {

LineBuilder::LineBuilder(const FontCollection& collection, const TextSettings& settings)
    : mSettings(settings),
      mFeatures(shapingFeatures(settings)),
      mLocales(localeListOf(settings.wish.localeListId)),
      mChooser(collection, settings.wish),
      mBuffer(hb_buffer_create()) {}

LineBuilder::~LineBuilder() {
    hb_buffer_destroy(mBuffer);
}

Layout LineBuilder::build(const uint16_t* text, size_t count, UnitRange line, Bidi bidi) {
    mLine = line;
    mLayout = Layout();
    mLayout.mAdvances.assign(line.length(), 0.0f);
    for (const DirectionRun& run : directionRuns(text, count, line, bidi)) {
        std::vector<TextPiece> pieces = textPieces(text, count, run.range);
        if (run.rightToLeft) std::reverse(pieces.begin(), pieces.end());
        for (const TextPiece& piece : pieces) addPiece(text, piece, run.rightToLeft);
    }
    return std::move(mLayout);
}

void LineBuilder::addPiece(const uint16_t* text, const TextPiece& piece, bool rightToLeft) {
    Pen pen;
    pen.firstGlyph = mLayout.mGlyphs.size();
    const UnitRange range = piece.range;
    std::vector<FontCollection::Run> runs = mChooser.itemize(text + range.start, range.length());
    if (rightToLeft) std::reverse(runs.begin(), runs.end());
    for (const FontCollection::Run& run : runs) {
        addFontRun(text, piece.word, {range.start + run.start, range.start + run.end}, run.fakedFont, rightToLeft,
                   &pen);
    }
    if (!runs.empty() && range.length() == 1 && isWordSpace(text[range.start])) {
        pen.x += mSettings.wordSpacing;
        mLayout.mAdvances[range.start - mLine.start] += mSettings.wordSpacing;
    }

    for (size_t i = pen.firstGlyph; i < mLayout.mGlyphs.size(); ++i) mLayout.mGlyphs[i].x += mLayout.mAdvance;
    pen.ink.offset(mLayout.mAdvance, 0.0f);
    mLayout.mBounds.join(pen.ink);
    mLayout.mAdvance += pen.x;
}

void LineBuilder::addFontRun(const uint16_t* text, UnitRange word, UnitRange run, FakedFont font, bool rightToLeft,
                             Pen* pen) {
    ScaledFont& scaledFont = scaled(font);
    // Scripts follow in text order even from right to left, as they do on the device.
    for (size_t start = run.start, end = 0; start < run.end; start = end) {
        const ScriptRun scriptRun = nextScriptRun(text, start, run.end);
        end = scriptRun.end;
        shape(text, word, {start, end}, scriptRun.script, scaledFont, rightToLeft);
        placeGlyphs(scaledFont, word.start, lettersJoin(scriptRun.script) ? 0.0f : mSettings.letterSpacingPixels(),
                    pen);
    }
}

void LineBuilder::shape(const uint16_t* text, UnitRange word, UnitRange run, hb_script_t script, ScaledFont& font,
                        bool rightToLeft) {
    hb_buffer_clear_contents(mBuffer);
    hb_buffer_set_script(mBuffer, script);
    hb_buffer_set_direction(mBuffer, rightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    const hb_language_t language = mLocales.hbLanguageFor(script);
    if (language != HB_LANGUAGE_INVALID) hb_buffer_set_language(mBuffer, language);
    hb_buffer_add_utf16(mBuffer, text + word.start, static_cast<int>(word.length()),
                        static_cast<unsigned>(run.start - word.start), static_cast<int>(run.length()));
    font.shape(mBuffer, mFeatures);
}

void LineBuilder::placeGlyphs(const ScaledFont& font, size_t wordStart, float letterSpacing, Pen* pen) {
    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(mBuffer, &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(mBuffer, nullptr);
    if (count == 0) return;

    std::vector<uint16_t> glyphs(count);
    for (unsigned i = 0; i < count; ++i) glyphs[i] = static_cast<uint16_t>(infos[i].codepoint);
    std::vector<MinikinRect> boxes;
    font.inkBoxes(glyphs, &boxes);

    const float half = letterSpacing * 0.5f;
    const auto advanceOf = [&](unsigned i) -> float& {
        return mLayout.mAdvances[wordStart + infos[i].cluster - mLine.start];
    };
    for (unsigned i = 0; i < count; ++i) {
        if (i == 0) {
            advanceOf(i) += half;
            pen->x += half;
        } else if (infos[i].cluster != infos[i - 1].cluster) {
            advanceOf(i - 1) += half;
            advanceOf(i) += half;
            pen->x += letterSpacing;
        }
        const float dy = 0.0f - ScaledFont::toPixels(positions[i].y_offset);
        const float dx = ScaledFont::toPixels(positions[i].x_offset) + dy * mSettings.raster.skewX;
        mLayout.mGlyphs.push_back({font.font(), glyphs[i], pen->x + dx, dy});
        boxes[i].offset(pen->x + dx, dy);
        pen->ink.join(boxes[i]);

        const float advance = ScaledFont::toPixels(positions[i].x_advance);
        advanceOf(i) += advance;
        pen->x += advance;
    }
    advanceOf(count - 1) += half;
    pen->x += half;
}

ScaledFont& LineBuilder::scaled(FakedFont font) {
    for (const auto& known : mScaledFonts) {
        if (known->font() == font) return *known;
    }
    mScaledFonts.push_back(std::make_unique<ScaledFont>(font, mSettings.raster));
    return *mScaledFonts.back();
}

}  // namespace minikin
