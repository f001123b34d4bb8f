#include "text/QxFontDrawing.h"

#include <hwui/MinikinUtils.h>
#include <hwui/Paint.h>
#include <hwui/Typeface.h>
#include <minikin/FontFamily.h>
#include <minikin/Layout.h>

#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "base/list_walk.h"
#include "base/no_throw.h"
#include "base/platform_log.h"
#include "effect/QxEffect.h"
#include "effect/safe_convert.h"
#include "font/FontManager.h"
#include "pixel/QxBitmap.h"
#include "text/QxLineInfo.h"
#include "text/QxTextObject.h"
#include "text/line_glyph.h"
#include "text/text_units.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxFontDrawing";

constexpr int kNormalWeight = 400;

// A collection numbers its families in a byte; the platform ends the process beyond this.
constexpr size_t kMaxFamilies = 254;

using Families = std::vector<std::shared_ptr<minikin::FontFamily>>;

void replaceString(QxString** slot, const char* text) {
    if (*slot != nullptr) {
        (*slot)->Set(text);
        return;
    }
    if (text == nullptr) return;
    std::unique_ptr<QxString> made(new (std::nothrow) QxString);
    if (made != nullptr && made->Construct(text)) *slot = made.release();
}

// Pixels to 26.6 fixed point; what lies too far out to count stays far out.
int toFixed(int position, int margin) {
    return saturateToInt((int64_t{position} + margin) * 64);
}

// Within what a stack can still add glyph sizes to. Pictures end long before.
int clampedPixel(int64_t position) {
    constexpr int64_t kFar = int64_t{1} << 30;
    return static_cast<int>(position > kFar ? kFar : position < -kFar ? -kFar : position);
}

// Moves the backgrounds by the margins. Left and right are computed afresh, top and bottom go down with every render:
// who wants them back captures the layout again.
void moveBounds(QxLineInfo* line, int leftMargin, int topMargin, int32_t right) {
    line->bounds.left = saturateToInt(int64_t{line->x} + leftMargin);
    line->bounds.top = saturateToInt(int64_t{line->bounds.top} + topMargin);
    line->bounds.right = right;
    line->bounds.bottom = saturateToInt(int64_t{line->bounds.bottom} + topMargin);
}

}  // namespace

QxFontDrawing::QxFontDrawing() : familyName(nullptr), fontPath(nullptr), glyphList(new (std::nothrow) List) {
    if (glyphList == nullptr || glyphList->Construct()) return;
    delete glyphList;
    glyphList = nullptr;
}

QxFontDrawing::~QxFontDrawing() {
    delete fontPath;
    delete familyName;
    ClearGlyphList();
    delete glyphList;
}

void QxFontDrawing::SetFontPath(const char* path) {
    if (path == nullptr) return;
    if (fontPath != nullptr && fontPath->CompareTo(path) == 0) return;
    replaceString(&fontPath, path);
}

void QxFontDrawing::SetFontFamilyName(const char* name) {
    replaceString(&familyName, name);
}

void QxFontDrawing::ClearGlyphList() {
    if (glyphList == nullptr || glyphList->GetCount() == 0) return;
    walkList(*glyphList, false, [](void* item) {
        deleteGlyph(static_cast<QxGlyph*>(item));
        return true;
    });
    glyphList->RemoveAll();
}

void QxFontDrawing::DrawTextEffect(QxTextObject* text, QxBitmap* dst) {
    if (text == nullptr || dst == nullptr) return;
    QxString* const content = text->GetText();
    if (content == nullptr) {
        logError(kTag, "DrawTextEffect(%p) - text is NULL", static_cast<void*>(this));
        return;
    }
    // The size counts the terminator, so it takes both to find an empty text and one that was never constructed.
    if (content->GetUTF16Size() < 1 || content->GetLength() < 1) {
        logError(kTag, "DrawTextEffect(%p) - textLength is 0", static_cast<void*>(this));
        return;
    }
    QxEffect* const effect = text->GetEffect();
    if (effect == nullptr) {
        logError(kTag, "DrawTextEffect(%p) - Effect is NULL", static_cast<void*>(this));
        return;
    }
    if (withoutThrowing([&] { draw(text, *content, effect, dst); })) return;
    effect->rectPending = true;  // the next render starts its rectangle afresh
}

void QxFontDrawing::draw(QxTextObject* text, const QxString& content, QxEffect* effect, QxBitmap* dst) {
    android::Paint paint = text->GetPaint();
    effect->addText(text->GetTextColor());
    effect->initEffect(static_cast<int>(dst->width), static_cast<int>(dst->height));
    effect->setDstBitmap(dst);

    const List* const lines = text->GetLineInfo();
    if (lines == nullptr) {
        logError(kTag, "DrawTextEffect(%p) - lineInfoList is NULL", static_cast<void*>(this));
        failWith(kTag, 8, 184);
        return;
    }
    Families families;
    int weight = kNormalWeight;
    if (!FontManager::GetInstance()->GetMinikinFontFamilies(familyName, families, fontPath, weight)) {
        logError(kTag, "DrawTextEffect(%p) - GetMinikinFontFamilies failed", static_cast<void*>(this));
        return;
    }
    if (QxLog::IsAllLogEnable()) {
        logDebug(kTag, "DrawTextEffect(%p) fontPath[%s] weight=%d", static_cast<void*>(this),
                 QxLog::ConvertLog(fontPath), weight);
    }
    if (families.size() > kMaxFamilies) families.resize(kMaxFamilies);

    // The bold bit chooses no font; weight comes from the font's name alone.
    std::unique_ptr<android::Typeface> typeface;
    if (!families.empty()) {
        typeface.reset(
            android::Typeface::createFromFamilies(std::move(families), weight, text->isItalicTextStyle() ? 1 : 0));
    }
    const TextUnits units(content);
    Scratch<int32_t> rightEdges(lines->GetCount());
    const Render render = {effect, &units, typeface.get(), &paint, effect->getLeftOffset(), effect->getTopOffset()};
    if (!units || !rightEdges || !drawLines(render, *lines, &rightEdges)) {
        effect->rectPending = true;
        return;
    }
    typeface.reset();
    effect->doEffectPostProcessing();
    effect->compositeLayers(dst);
}

// The bounds move only once every line has been drawn: a render that runs out of memory leaves them for the next one.
bool QxFontDrawing::drawLines(const Render& render, const List& lines, Scratch<int32_t>* rightEdges) {
    size_t index = 0;
    const bool drawn = walkList(lines, false, [&](void* item) {
        int32_t* const rightEdge = &(*rightEdges)[index++];
        return item == nullptr || drawLine(render, *static_cast<const QxLineInfo*>(item), rightEdge);
    });
    if (!drawn) return false;
    index = 0;
    walkList(lines, false, [&](void* item) {
        const int32_t right = (*rightEdges)[index++];
        if (item != nullptr) moveBounds(static_cast<QxLineInfo*>(item), render.leftMargin, render.topMargin, right);
        return true;
    });
    return true;
}

bool QxFontDrawing::drawLine(const Render& render, const QxLineInfo& line, int32_t* rightEdge) {
    if (glyphList == nullptr) return false;
    ClearGlyphList();

    std::optional<minikin::Layout> layout;
    if (render.typeface != nullptr) {
        const TextUnits::LineRange range = render.units->rangeOf(line);
        const minikin::Bidi bidi = line.direction < 0 ? minikin::Bidi::DEFAULT_RTL : minikin::Bidi::DEFAULT_LTR;
        layout.emplace(android::MinikinUtils::doLayout(render.paint, bidi, render.typeface, render.units->data(),
                                                       render.units->size(), range.start, range.count,
                                                       range.contextStart, range.contextCount, nullptr));
    }
    std::unique_ptr<QxGlyph, decltype(&deleteGlyph)> glyph(drawLineGlyph(layout ? &*layout : nullptr, render.paint),
                                                           &deleteGlyph);
    if (glyph == nullptr || !glyphList->Add(static_cast<void*>(glyph.get()))) return false;
    static_cast<void>(glyph.release());  // the list has it now
    _DoRender(toFixed(line.x, render.leftMargin), toFixed(line.y, render.topMargin), glyphList, render.effect,
              line.direction);

    const float left = static_cast<float>(saturateToInt(int64_t{line.x} + render.leftMargin));
    *rightEdge = truncToInt(left + (layout ? layout->getAdvance() : 0.0f));
    return true;
}

void QxFontDrawing::_DoRender(int x, int y, List* glyphs, QxEffect* effect, int direction) {
    if (glyphs == nullptr || effect == nullptr) return;
    int64_t penX26d6 = x;
    const int64_t baseline = y >> 6;
    walkList(*glyphs, direction < 0, [&](void* item) {
        auto* const glyph = static_cast<QxGlyph*>(item);
        if (glyph == nullptr) return true;
        effect->renderEffectLayer(clampedPixel(glyph->left + (penX26d6 >> 6)), clampedPixel(baseline - glyph->top),
                                  glyph);
        penX26d6 += int64_t{glyph->width} * 64;
        return true;
    });
}

}  // namespace QxFontEffect
