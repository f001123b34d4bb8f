#include "text/long_text.h"

#include <cmath>
#include <vector>

#include "base/List.h"
#include "base/QxString.h"
#include "paragraph/paragraph.h"
#include "scene/fonts.h"
#include "text/QxLineInfo.h"
#include "text/QxView.h"
#include "text/line_capture.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr size_t kLettersALine = 20;
constexpr float kSize = 12.0f;
// Takes three or four words of 12 px.
constexpr float kWrapWidth = 116.0f;

std::string textOf(int lines, Breaks breaks) {
    std::string text = someWords(static_cast<size_t>(lines) * kLettersALine);
    if (breaks == Breaks::Newlines)
        for (size_t end = kLettersALine; end < text.size(); end += kLettersALine) text[end - 1] = '\n';
    return text;
}

}  // namespace

std::string someWords(size_t count) {
    const char* const words[] = {"glyph", "of", "shadow", "and", "outline", "by", "stroke", "a", "colour", "light"};
    std::string text;
    for (uint32_t state = 1; text.size() < count;) {
        state = state * 1664525u + 1013904223u;
        text += words[(state >> 16) % std::size(words)];
        text += ' ';
    }
    text.resize(count);
    // A blank at the end of a text belongs to no line.
    if (text.back() == ' ') text.back() = 'o';
    return text;
}

LongText::LongText(int lines, Breaks breaks) {
    const std::string text = textOf(lines, breaks);
    QxString string;
    string.Construct(text.c_str());
    mObject.Construct();
    mObject.SetText(&string);
    android::Paint paint = benchPaint(kSize);
    mObject.SetPaint(paint);

    const std::vector<uint16_t> units(text.begin(), text.end());
    qxhost::ParagraphStyle style;
    style.width = breaks == Breaks::Wrapping ? kWrapWidth : 0.0f;
    const qxhost::Paragraph laidOut =
        qxhost::layoutParagraphs(units.data(), units.size(), paint, &benchTypeface(), style);
    List records;
    records.Construct();
    for (const qxhost::ParagraphLine& line : laidOut.lines) {
        auto record = std::make_unique<QxLineInfo>(
            captureLine(*mObject.GetView(),
                        {line.start, line.visibleEnd, line.baseline, line.ascent, line.descent, line.left, line.width},
                        line.baseline, line.baseline));
        records.Add(static_cast<void*>(record.release()));
    }
    mObject.SetLineInfo(&records);
    mLines = static_cast<int>(laidOut.lines.size());
    mWidth = static_cast<int>(std::ceil(laidOut.width));
    mHeight = laidOut.height;
    mObject.GetView()->SetBitmapWidth(mWidth);
    mObject.GetView()->SetBitmapHeight(mHeight);
}

bool LongText::lastLineIsDrawn() {
    const unsigned char* const pixels = mObject.RenderTextEffect(mWidth, mHeight);
    if (pixels == nullptr) return false;
    const int64_t lineHeight = mHeight / mLines;
    for (int64_t i = (mHeight - lineHeight) * mWidth; i < this->pixels(); ++i)
        if (pixels[4 * i + 3] != 0) return true;
    return false;
}

}  // namespace qxbench
