#include "text_lines.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include <hwui/Paint.h>
#include <hwui/Typeface.h>

#include "base/List.h"
#include "base/QxString.h"
#include "failure.h"
#include "font/FontManager.h"
#include "line_padding.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"
#include "text/line_capture.h"

namespace qxrender {

namespace {

using namespace QxFontEffect;

/// A line's box counts its pixels in 16 bits.
constexpr float kLongestSide = 65535.0f;

std::vector<uint16_t> unitsOf(const QxTextObject& object) {
    QxString* text = const_cast<QxTextObject&>(object).GetText();
    const std::unique_ptr<uint16_t[]> units(text->GetUTF16());
    if (units == nullptr) throw Failure("out of memory");
    return std::vector<uint16_t>(units.get(), units.get() + text->GetUTF16Size() - 1);
}

int checkedPixels(double pixels) {
    if (!(pixels <= 1 << 24)) throw Failure("the picture would be larger than memory allows");
    return static_cast<int>(pixels);
}

LayoutLine layoutLine(const qxhost::ParagraphLine& line) {
    return {line.start, line.visibleEnd, line.baseline, line.ascent, line.descent, line.left, line.width};
}

}  // namespace

TextLines::TextLines(QxTextObject& object, const Job& job, const FontChoice& fonts)
    : mObject(object), mPadding(job.padding) {
    int weight = 400;
    QxString path;
    path.Construct(fonts.userFont.c_str());
    FontManager::GetInstance()->GetMinikinFontFamilies(nullptr, mFamilies, fonts.userFont.empty() ? nullptr : &path,
                                                       weight);
    std::vector<std::shared_ptr<minikin::FontFamily>> families = mFamilies;
    mTypeface.reset(
        android::Typeface::createFromFamilies(std::move(families), weight, object.isItalicTextStyle() ? 1 : 0));

    const std::vector<uint16_t> units = unitsOf(object);
    mParagraph =
        qxhost::layoutParagraphs(units.data(), units.size(), object.GetPaint(), mTypeface.get(), job.paragraph);
    setUpView(job);
    widenOverhanging();
}

TextLines::~TextLines() = default;

void TextLines::setUpView(const Job& job) {
    QxView& view = *mObject.GetView();
    view.gravity = job.gravity;
    view.maxLines = job.maxLines > 0 ? job.maxLines : INT_MAX;
    const Padding& padding = job.padding;
    view.SetPadding(padding.left, padding.top, padding.right, padding.bottom);
    const int count = static_cast<int>(mParagraph.lines.size());
    mShown = shownLineCount(view, count);
    mFirst = isBottomAligned(view) ? count - mShown : 0;
    const int textHeight = mShown > 0 ? mParagraph.lines[static_cast<size_t>(mShown) - 1].bottom : 0;
    const double width = std::ceil(static_cast<double>(mParagraph.width)) + padding.left + padding.right;
    const double height = job.height > 0 ? job.height : static_cast<double>(textHeight) + padding.top + padding.bottom;
    view.SetSize(checkedPixels(width), checkedPixels(height));
}

void TextLines::widenOverhanging() {
    const std::vector<uint16_t> units = unitsOf(mObject);
    LinePadding padding(units, mObject.GetPaint(), *mTypeface);
    for (int i = mFirst; i < mFirst + mShown; ++i) padding.add(mParagraph.lines[static_cast<size_t>(i)]);
    if (padding.tallest() > kLongestSide || padding.widest() > kLongestSide)
        throw Failure("a line is larger than 65535 pixels, the most that can be drawn; give --width to wrap it");
    if (!padding.isNeeded()) return;
    QxString text;
    if (!text.Construct(padding.paddedText().c_str()) || !mObject.SetText(&text)) throw Failure("out of memory");
    padding.moveLines(mParagraph.lines);
}

void TextLines::place(int shift) const {
    QxView& view = *mObject.GetView();
    view.SetPadding(mPadding.left, mPadding.top, mPadding.right, mPadding.bottom);
    List records;
    records.Construct();
    if (mShown > 0) {
        const auto line = [&](int i) -> const qxhost::ParagraphLine& {
            return mParagraph.lines[static_cast<size_t>(i)];
        };
        const int lastCounted = isBottomAligned(view) ? static_cast<int>(mParagraph.lines.size()) : mShown;
        const int baseline0 = line(0).baseline;
        const int origin = baselineOrigin(view, baseline0, line(lastCounted - 1).bottom);
        for (int i = mFirst; i < mFirst + mShown; ++i) {
            auto record = std::make_unique<QxLineInfo>(captureLine(view, layoutLine(line(i)), origin, baseline0));
            record->x += shift;
            record->y += shift;
            QxRect& bounds = record->bounds;
            bounds = QxRect(bounds.left + shift, bounds.top + shift, bounds.right + shift, bounds.bottom + shift);
            records.Add(static_cast<void*>(record.release()));
        }
    }
    // The lines stand where they should; at the drawing paddings would only cut decorations that reach into them.
    view.SetPadding(0, 0, 0, 0);
    if (!mObject.SetLineInfo(&records)) throw Failure("out of memory");
}

}  // namespace qxrender
