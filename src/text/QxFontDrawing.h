#pragma once

#include <cstdint>

#include "base/Scratch.h"

namespace android {
class Paint;
struct Typeface;
}  // namespace android

namespace QxFontEffect {

class List;
class QxBitmap;
class QxEffect;
class QxString;
class QxTextObject;
class TextUnits;
struct QxLineInfo;

/// The drawing driver of a text object: lays out its lines, rasterises each into a coverage image and runs the effect
/// stack over them. Knows the font; everything else is read from the text object. Used from one thread at a time.
class QxFontDrawing {
public:
    QxFontDrawing();
    QxFontDrawing(const QxFontDrawing&) = delete;
    QxFontDrawing& operator=(const QxFontDrawing&) = delete;
    virtual ~QxFontDrawing();

    /// The font to draw with: the path of a registered font. Null is ignored.
    void SetFontPath(const char* path);

    /// The wished family. Null takes it away.
    void SetFontFamilyName(const char* name);

    /// Deletes the coverage images of the last line.
    void ClearGlyphList();

    /// Draws the text with all its effects into `dst` (4 bytes a pixel, size of the picture, all zero).
    ///
    /// A text object without text, effect stack, line list or fonts leaves `dst` as it is, which the log says; so
    /// does a lack of memory, silently. The bounds of the line records are moved by the effect margins.
    void DrawTextEffect(QxTextObject* text, QxBitmap* dst);

    /// Hands the glyph records of a line to the effect stack, side by side.
    ///
    /// @param x, y       pen and baseline in 26.6 fixed point.
    /// @param glyphs     QxGlyph records; null does nothing.
    /// @param direction  negative places the last record first.
    void _DoRender(int x, int y, List* glyphs, QxEffect* effect, int direction);

private:
    /// What all lines of one render share.
    struct Render {
        QxEffect* effect;
        const TextUnits* units;
        const android::Typeface* typeface;  ///< null when there is no font at all
        android::Paint* paint;
        int leftMargin;
        int topMargin;
    };

    void draw(QxTextObject* text, const QxString& content, QxEffect* effect, QxBitmap* dst);
    bool drawLines(const Render& render, const List& lines, Scratch<int32_t>* rightEdges);
    bool drawLine(const Render& render, const QxLineInfo& line, int32_t* rightEdge);

    QxString* familyName;
    QxString* fontPath;
    List* glyphList;
};

}  // namespace QxFontEffect
