#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <hwui/Paint.h>

#include "paragraph/paragraph.h"

namespace android {
struct Typeface;
}

namespace qxrender {

/// Makes room for letters that lean out of their line.
///
/// The library draws each line into a box that is as wide as the line's advance, with the leftmost ink at its left
/// edge. Italics, slanted letters and a negative letter spacing can end further right than that. This finds the lines
/// concerned and writes a text in which they end in as many blanks as it takes.
class LinePadding {
public:
    /// Units and typeface must outlive the object.
    LinePadding(const std::vector<uint16_t>& units, const android::Paint& paint, const android::Typeface& typeface);

    /// Measures a line; to be called in the order of the text.
    void add(const qxhost::ParagraphLine& line);

    bool isNeeded() const { return !mInsertions.empty(); }
    std::wstring paddedText() const;
    /// Moves all lines of the paragraph from the old text to the padded one.
    void moveLines(std::vector<qxhost::ParagraphLine>& lines) const;

    /// Largest box of a line so far, in pixels.
    float widest() const { return mWidest; }
    float tallest() const { return mTallest; }

private:
    struct Insertion {
        int at;  ///< end of the line's visible part
        std::vector<uint16_t> blanks;
    };

    std::vector<uint16_t> blanksFor(float missing, bool rightToLeft) const;
    float advanceOf(uint16_t unit) const;

    const std::vector<uint16_t>& mUnits;
    const android::Paint mPaint;
    const android::Typeface& mTypeface;
    std::vector<Insertion> mInsertions;
    float mWidest = 0.0f;
    float mTallest = 0.0f;
};

}  // namespace qxrender
