#include "render.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>

#include <hwui/Paint.h>
#include <hwui/Typeface.h>
#include <minikin/LocaleList.h>

#include "adjustments.h"
#include "available_memory.h"
#include "base/List.h"
#include "base/QxString.h"
#include "effect/QxEffect.h"
#include "failure.h"
#include "font/FontManager.h"
#include "text/QxFontDrawing.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"
#include "text/line_capture.h"
#include "text_input.h"

namespace qxrender {

namespace {

using namespace QxFontEffect;

class StopWatch {
public:
    explicit StopWatch(Rendering& rendering) : mRendering(rendering) {}

    void lap(const char* stage) {
        const auto now = std::chrono::steady_clock::now();
        mRendering.milliseconds.emplace_back(stage, std::chrono::duration<double, std::milli>(now - mStart).count());
        mStart = now;
    }

private:
    Rendering& mRendering;
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
};

android::Paint makePaint(const Job& job, const FontChoice& fonts) {
    android::Paint paint;
    paint.setAntiAlias(true);
    SkFont& font = paint.getSkFont();
    font.setSize(job.size);
    font.setScaleX(job.scaleX);
    font.setSkewX(job.skewX);
    font.setEmbolden(fonts.fakeBold);
    paint.setLetterSpacing(job.letterSpacing);
    if (!job.features.empty()) paint.setFontFeatureSettings(job.features);
    if (!job.font.languages.empty()) paint.setMinikinLocaleListId(minikin::registerLocaleList(job.font.languages));
    return paint;
}

/// A text object with text, font and paint, ready to be measured.
std::unique_ptr<QxTextObject> makeTextObject(const Job& job, const FontChoice& fonts) {
    auto object = std::make_unique<QxTextObject>();
    QxString text;
    if (!object->Construct() || !text.Construct(job.text.c_str()) || !object->SetText(&text))
        throw Failure("out of memory");
    if (!fonts.userFont.empty() && !object->SetFont(fonts.userFont.c_str()))
        throw Failure("'" + fonts.userFont + "' is not a usable font");
    android::Paint paint = makePaint(job, fonts);
    object->SetPaint(paint);
    object->SetTextStyle(false, fonts.fakeItalic);
    return object;
}

/// The families, weight and slant that the library will draw the object with.
struct DrawingFonts {
    std::vector<std::shared_ptr<minikin::FontFamily>> families;
    std::unique_ptr<android::Typeface> typeface;
};

DrawingFonts drawingFonts(QxTextObject& object, const FontChoice& fonts) {
    DrawingFonts drawing;
    int weight = 400;
    QxString path;
    path.Construct(fonts.userFont.c_str());
    FontManager::GetInstance()->GetMinikinFontFamilies(nullptr, drawing.families,
                                                       fonts.userFont.empty() ? nullptr : &path, weight);
    std::vector<std::shared_ptr<minikin::FontFamily>> families = drawing.families;
    drawing.typeface.reset(
        android::Typeface::createFromFamilies(std::move(families), weight, object.isItalicTextStyle() ? 1 : 0));
    return drawing;
}

qxhost::Paragraph layout(QxTextObject& object, const Job& job, const FontChoice& fonts) {
    const DrawingFonts drawing = drawingFonts(object, fonts);
    const std::unique_ptr<uint16_t[]> units(object.GetText()->GetUTF16());
    if (units == nullptr) throw Failure("out of memory");
    const size_t count = static_cast<size_t>(object.GetText()->GetUTF16Size() - 1);
    return qxhost::layoutParagraphs(units.get(), count, object.GetPaint(), drawing.typeface.get(), job.paragraph);
}

int checkedPixels(double pixels) {
    if (!(pixels <= 1 << 24)) throw Failure("the picture would be larger than memory allows");
    return static_cast<int>(pixels);
}

void setUpView(QxView& view, const Job& job, const qxhost::Paragraph& paragraph) {
    view.gravity = job.gravity;
    view.maxLines = job.maxLines > 0 ? job.maxLines : INT_MAX;
    const Padding& padding = job.padding;
    view.SetPadding(padding.left, padding.top, padding.right, padding.bottom);
    const int shown = shownLineCount(view, static_cast<int>(paragraph.lines.size()));
    const int textHeight = shown > 0 ? paragraph.lines[static_cast<size_t>(shown) - 1].bottom : 0;
    const double width = std::ceil(static_cast<double>(paragraph.width)) + padding.left + padding.right;
    const double height = job.height > 0 ? job.height : static_cast<double>(textHeight) + padding.top + padding.bottom;
    view.SetSize(checkedPixels(width), checkedPixels(height));
}

LayoutLine layoutLine(const qxhost::ParagraphLine& line) {
    return {line.start, line.visibleEnd, line.baseline, line.ascent, line.descent, line.left, line.width};
}

/// The records of the lines shown, moved by `shift` in both directions.
int captureLines(QxTextObject& object, const qxhost::Paragraph& paragraph, int shift) {
    const QxView& view = *object.GetView();
    const int count = static_cast<int>(paragraph.lines.size());
    const int shown = shownLineCount(view, count);
    List records;
    records.Construct();
    if (shown > 0) {
        const bool fromBottom = isBottomAligned(view);
        const auto line = [&](int i) -> const qxhost::ParagraphLine& {
            return paragraph.lines[static_cast<size_t>(i)];
        };
        const int baseline0 = line(0).baseline;
        const int origin = baselineOrigin(view, baseline0, line((fromBottom ? count : shown) - 1).bottom);
        const int first = fromBottom ? count - shown : 0;
        for (int i = first; i < first + shown; ++i) {
            auto record = std::make_unique<QxLineInfo>(captureLine(view, layoutLine(line(i)), origin, baseline0));
            record->x += shift;
            record->y += shift;
            QxRect& bounds = record->bounds;
            bounds = QxRect(bounds.left + shift, bounds.top + shift, bounds.right + shift, bounds.bottom + shift);
            records.Add(static_cast<void*>(record.release()));
        }
    }
    if (!object.SetLineInfo(&records)) throw Failure("out of memory");
    return shown;
}

uint32_t fainter(uint32_t color, float opacity) {
    const auto alpha = static_cast<uint32_t>(std::lround(static_cast<float>(color >> 24) * opacity));
    return alpha << 24 | (color & 0xFFFFFF);
}

/// Whether the stack is to run in layer mode, which the library does for a text opacity below 1. One just below
/// changes nothing else.
bool wantsLayer(const Style& style) {
    if (style.mode != LayerMode::Auto) return style.mode == LayerMode::Layer;
    return style.opacity < 1.0f || std::any_of(style.effects.begin(), style.effects.end(),
                                               [](const EffectSetting& e) { return e.kind->needsLayer(e); });
}

/// The library composes by its text opacity but scales by the text colour's alpha, so fading takes both.
void setUpEffects(QxTextObject& object, const Style& style) {
    QxEffect& stack = *object.GetEffect();
    object.SetTextColor(fainter(style.color, style.opacity));
    for (const EffectSetting& effect : style.effects) effect.kind->add(stack, effect);
    if (wantsLayer(style)) stack.setTextOpacity(std::min(style.opacity, std::nextafter(1.0f, 0.0f)));
}

int reachOf(const Style& style) {
    int reach = 0;
    for (const EffectSetting& effect : style.effects) reach = std::max(reach, effect.kind->reach(effect));
    return reach;
}

/// The pixels as the library left them: blue, green, red, alpha in memory.
Picture copyPicture(const unsigned char* pixels, int width, int height) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (size_t i = 0; i < picture.pixels.size(); ++i) {
        const unsigned char* p = pixels + 4 * i;
        picture.pixels[i] = static_cast<uint32_t>(p[3]) << 24 | static_cast<uint32_t>(p[2]) << 16 |
                            static_cast<uint32_t>(p[1]) << 8 | p[0];
    }
    return picture;
}

void refuseOversize(int64_t width, int64_t height) {
    // Output, effect picture, layer, coverage and the scratch of one effect live at the same time, and the result is
    // copied twice on its way into the file.
    constexpr int64_t kBytesPerPixel = 32;
    if (width > 0 && height > 0 && width > availableMemory() / kBytesPerPixel / height)
        throw Failure("a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                      " is larger than memory allows");
}

/// Draws into a bitmap that is `reach` pixels larger on every side than the library asks for, then cuts it down to
/// the view with its margins and whatever was painted beyond them.
Picture draw(QxTextObject& object, int reach, Rendering& rendering) {
    QxView& view = *object.GetView();
    const Padding& m = rendering.margins;
    const int64_t width = int64_t{view.GetWidth()} + m.left + m.right + 2 * reach;
    const int64_t height = int64_t{view.GetHeight()} + m.top + m.bottom + 2 * reach;
    refuseOversize(width, height);
    view.SetBitmapWidth(static_cast<int>(width));
    view.SetBitmapHeight(static_cast<int>(height));
    // The lines are placed already; the view's paddings would only cut decorations that reach into them.
    view.SetPadding(0, 0, 0, 0);
    const auto* pixels = reinterpret_cast<const unsigned char*>(
        object.RenderTextEffect(static_cast<int>(width), static_cast<int>(height)));
    if (pixels == nullptr && width * height > 0)
        throw Failure("a picture of " + std::to_string(width) + " x " + std::to_string(height) +
                      " is larger than memory allows");
    const Picture whole = copyPicture(pixels, static_cast<int>(width), static_cast<int>(height));

    Box box{reach, reach, whole.width - reach, whole.height - reach};
    const Box ink = inkBox(whole);
    if (ink.right > ink.left)
        box = {std::min(box.left, ink.left), std::min(box.top, ink.top), std::max(box.right, ink.right),
               std::max(box.bottom, ink.bottom)};
    rendering.textX = m.left + reach - box.left;
    rendering.textY = m.top + reach - box.top;
    return cropped(whole, box);
}

}  // namespace

Rendering render(const Job& job) {
    Rendering rendering;
    StopWatch watch(rendering);
    const FontChoice fonts = prepareFonts(job.font, decodeText(job.text));
    const std::unique_ptr<QxTextObject> object = makeTextObject(job, fonts);
    watch.lap("fonts");

    const qxhost::Paragraph paragraph = layout(*object, job, fonts);
    setUpView(*object->GetView(), job, paragraph);
    const int reach = reachOf(job.style);
    rendering.lines = captureLines(*object, paragraph, reach);
    object->SetBackgroundColor(job.lineBackground, job.hasLineBackground);
    watch.lap("layout");

    QxEffect& stack = *object->GetEffect();
    setUpEffects(*object, job.style);
    rendering.adjustments = findAdjustments(stack, job.style.effects);
    rendering.margins = {stack.getLeftOffset(), stack.getTopOffset(), stack.getRightOffset(), stack.getBottomOffset()};
    rendering.viewWidth = object->GetView()->GetWidth();
    rendering.viewHeight = object->GetView()->GetHeight();
    rendering.layerMode = wantsLayer(job.style) || stack.hasEffect(QXE_EMBOSS);
    rendering.picture = draw(*object, reach, rendering);
    watch.lap("render");
    return rendering;
}

}  // namespace qxrender
