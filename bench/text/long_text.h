#pragma once

#include <memory>
#include <string>

#include "text/QxTextObject.h"

namespace qxbench {

enum class Breaks {
    Newlines,  ///< every line is a paragraph
    Wrapping,  ///< one paragraph without a newline
};

/// A text object with a text of about `lines` lines of 20 letters, laid out and ready to render.
class LongText {
public:
    LongText(int lines, Breaks breaks);

    /// Draws the whole text. False without a picture.
    bool render() { return mObject.RenderTextEffect(mWidth, mHeight) != nullptr; }

    /// Whether the last picture has anything in its last line.
    bool lastLineIsDrawn();

    int lines() const { return mLines; }
    int64_t pixels() const { return int64_t{mWidth} * mHeight; }

private:
    QxFontEffect::QxTextObject mObject;
    int mLines = 0, mWidth = 0, mHeight = 0;
};

/// `count` letters in words, the same at every call.
std::string someWords(size_t count);

}  // namespace qxbench
