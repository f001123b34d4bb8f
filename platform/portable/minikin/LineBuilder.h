#pragma once

#include <hb.h>

#include <memory>
#include <vector>

#include <minikin/FontCollection.h>
#include <minikin/Layout.h>

#include "DirectionRuns.h"
#include "FontChooser.h"
#include "ScaledFont.h"
#include "TextPieces.h"
#include "TextSettings.h"

namespace minikin {

class LocaleList;

/// Lays out one line: directions, then pieces, then fonts, then scripts, each split further and set in turn from
/// left to right.
class LineBuilder {
public:
    /// Both must outlive the builder.
    LineBuilder(const FontCollection& collection, const TextSettings& settings);
    ~LineBuilder();

    /// @param text  the paragraph, count units.
    /// @param line  within the paragraph.
    Layout build(const uint16_t* text, size_t count, UnitRange line, Bidi bidi);

private:
    /// What is being set: ink and pen start at 0 and move to their place when the piece is complete. Adding up in
    /// this order decides the last digits of positions.
    struct Pen {
        float x = 0.0f;
        MinikinRect ink;
        size_t firstGlyph = 0;
    };

    void addPiece(const uint16_t* text, const TextPiece& piece, bool rightToLeft);
    void addFontRun(const uint16_t* text, UnitRange word, UnitRange run, FakedFont font, bool rightToLeft, Pen* pen);
    void shape(const uint16_t* text, UnitRange word, UnitRange run, hb_script_t script, ScaledFont& font,
               bool rightToLeft);
    void placeGlyphs(const ScaledFont& font, size_t wordStart, float letterSpacing, Pen* pen);
    ScaledFont& scaled(FakedFont font);

    const TextSettings& mSettings;
    const std::vector<hb_feature_t> mFeatures;
    const LocaleList& mLocales;
    FontChooser mChooser;
    std::vector<std::unique_ptr<ScaledFont>> mScaledFonts;
    hb_buffer_t* const mBuffer;

    UnitRange mLine = {0, 0};
    Layout mLayout;
};

}  // namespace minikin
