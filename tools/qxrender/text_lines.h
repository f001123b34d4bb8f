#pragma once

#include <memory>
#include <vector>

#include "fonts.h"
#include "job.h"
#include "paragraph/paragraph.h"

namespace android {
struct Typeface;
}
namespace minikin {
class FontFamily;
}
namespace QxFontEffect {
class QxTextObject;
}

namespace qxrender {

/// The lines of a text object: measured once, then placed into its view as often as needed.
class TextLines {
public:
    /// Lays out the object's text and sets its view up with size, paddings and gravity. A line whose letters lean out
    /// of its advance gets blanks at its end, in the object's text too, because the library draws a line into a box as
    /// wide as its advance. Throws Failure: out of memory, or a line larger than the library draws.
    TextLines(QxFontEffect::QxTextObject& object, const Job& job, const FontChoice& fonts);
    ~TextLines();

    /// Gives the object the records of the lines that the view shows, moved by `shift` pixels right and down.
    void place(int shift) const;

    /// How many lines the view shows.
    int shown() const { return mShown; }

private:
    void setUpView(const Job& job);
    void widenOverhanging();

    QxFontEffect::QxTextObject& mObject;
    const Padding mPadding;
    std::vector<std::shared_ptr<minikin::FontFamily>> mFamilies;
    std::unique_ptr<android::Typeface> mTypeface;
    qxhost::Paragraph mParagraph;
    int mFirst = 0;
    int mShown = 0;
};

}  // namespace qxrender
