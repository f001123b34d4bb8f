#include "render.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

#include <hwui/Paint.h>
#include <minikin/LocaleList.h>

#include "adjustments.h"
#include "available_memory.h"
#include "base/QxString.h"
#include "effect/QxEffect.h"
#include "failure.h"
#include "style_stack.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"
#include "text_input.h"
#include "text_lines.h"

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

/// The library takes the layer for one by itself, as it does for an emboss.
bool hasCenteredStroke(const Style& style) {
    return std::any_of(style.effects.begin(), style.effects.end(),
                       [](const EffectSetting& e) { return e.kind->type == QXE_STROKE && e["position"].number == 0; });
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

std::string oversizeMessage(int64_t width, int64_t height) {
    return "a picture of " + std::to_string(width) + " x " + std::to_string(height) + " is larger than memory allows";
}

void refuseOversize(int64_t width, int64_t height) {
    // Output, effect picture, layer, coverage and the scratch of one effect live at the same time, and the result is
    // copied twice on its way into the file.
    constexpr int64_t kBytesPerPixel = 32;
    if (width > 0 && height > 0 && width > availableMemory() / kBytesPerPixel / height)
        throw Failure(oversizeMessage(width, height));
}

/// Draws into a bitmap that is `extra` pixels larger on every side than the library asks for.
Picture drawWhole(QxTextObject& object, const TextLines& lines, int extra, const Rendering& rendering) {
    QxView& view = *object.GetView();
    const Padding& m = rendering.margins;
    const int64_t width = int64_t{view.GetWidth()} + m.left + m.right + 2 * int64_t{extra};
    const int64_t height = int64_t{view.GetHeight()} + m.top + m.bottom + 2 * int64_t{extra};
    refuseOversize(width, height);
    lines.place(extra);
    view.SetBitmapWidth(static_cast<int>(width));
    view.SetBitmapHeight(static_cast<int>(height));
    const auto* pixels = reinterpret_cast<const unsigned char*>(
        object.RenderTextEffect(static_cast<int>(width), static_cast<int>(height)));
    if (pixels == nullptr && width * height > 0) throw Failure(oversizeMessage(width, height));
    return copyPicture(pixels, static_cast<int>(width), static_cast<int>(height));
}

bool touchesRim(const Box& ink, const Picture& picture) {
    return ink.left == 0 || ink.top == 0 || ink.right == picture.width || ink.bottom == picture.height;
}

/// The view with its margins and whatever was painted beyond them: accents above the first line, the outer pixels of
/// a relief. The room around grows until no ink touches its rim, which is then all there is.
Picture draw(QxTextObject& object, const TextLines& lines, int reach, Rendering& rendering) {
    constexpr int kTries = 6;
    int extra = reach + 1;
    Picture whole = drawWhole(object, lines, extra, rendering);
    Box ink = inkBox(whole);
    for (int i = 1; i < kTries && !ink.isEmpty() && touchesRim(ink, whole); ++i) {
        extra = 2 * extra + 32;
        whole = drawWhole(object, lines, extra, rendering);
        ink = inkBox(whole);
    }
    Box box{extra, extra, whole.width - extra, whole.height - extra};
    // An empty text still makes a picture, of one pixel if need be.
    box.right = std::max(box.right, box.left + 1);
    box.bottom = std::max(box.bottom, box.top + 1);
    if (!ink.isEmpty())
        box = {std::min(box.left, ink.left), std::min(box.top, ink.top), std::max(box.right, ink.right),
               std::max(box.bottom, ink.bottom)};
    rendering.textX = rendering.margins.left + extra - box.left;
    rendering.textY = rendering.margins.top + extra - box.top;
    return cropped(whole, box);
}

}  // namespace

Rendering render(const Job& job) {
    Rendering rendering;
    StopWatch watch(rendering);
    const FontChoice fonts = prepareFonts(job.font, decodeText(job.text));
    const std::unique_ptr<QxTextObject> object = makeTextObject(job, fonts);
    watch.lap("fonts");

    const TextLines lines(*object, job, fonts);
    rendering.lines = lines.shown();
    object->SetBackgroundColor(job.lineBackground, job.hasLineBackground);
    watch.lap("layout");

    QxEffect& stack = *object->GetEffect();
    object->SetTextColor(textColorOf(job.style));
    addStyle(stack, job.style);
    rendering.adjustments = findAdjustments(stack, job.style.effects);
    rendering.margins = {stack.getLeftOffset(), stack.getTopOffset(), stack.getRightOffset(), stack.getBottomOffset()};
    rendering.viewWidth = object->GetView()->GetWidth();
    rendering.viewHeight = object->GetView()->GetHeight();
    rendering.layerMode = wantsLayer(job.style) || hasCenteredStroke(job.style) || stack.hasEffect(QXE_EMBOSS);
    rendering.picture = draw(*object, lines, reachOf(job.style), rendering);
    watch.lap("render");
    return rendering;
}

}  // namespace qxrender
