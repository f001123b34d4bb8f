#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace android {
class Paint;
struct Typeface;
}  // namespace android

namespace qxhost {

/// Where lines sit between the edges. Start and end follow the direction of the paragraph.
enum class Alignment { Start, Left, Center, Right, End };

struct ParagraphStyle {
    float width = 0.0f;  ///< pixels to wrap at; 0 or less: only at newlines, aligned within the longest line
    Alignment alignment = Alignment::Start;
    float lineSpacing = 1.0f;  ///< factor on the line height, 0.1..10
};

/// One line, with the numbers that the platform's paragraph layout reports. Pixels, y down from the top of the text.
struct ParagraphLine {
    int start;       ///< first UTF-16 unit
    int end;         ///< one past the last, the newline included
    int visibleEnd;  ///< without newline and trailing blanks; the last line keeps its blanks
    float left;      ///< left edge of the visible part
    float width;     ///< advance of the visible part
    int top;
    int baseline;
    int bottom;        ///< top of the next line
    int ascent;        ///< of the tallest font in the line, negative
    int descent;       ///< of the deepest font in the line
    bool rightToLeft;  ///< direction of the line's paragraph
};

struct Paragraph {
    std::vector<ParagraphLine> lines;
    float width = 0.0f;  ///< the style's width, else that of the longest line
    int height = 0;
};

/// Breaks a text into lines and places them.
///
/// Lines end at LF, CR, CR LF, and, with a width, at the last break opportunity that fits (Unicode line breaking as
/// ICU has it); a word wider than the line breaks between user-perceived characters. Each paragraph is shaped once and
/// its lines are found by adding up advances, so the time is linear in the text.
///
/// @param text      UTF-16, count units; lone surrogates are allowed.
/// @param typeface  must outlive nothing but the call. Null gives lines without width.
Paragraph layoutParagraphs(const uint16_t* text, size_t count, const android::Paint& paint,
                           const android::Typeface* typeface, const ParagraphStyle& style);

}  // namespace qxhost
