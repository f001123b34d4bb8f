#include <algorithm>
#include <cstdint>
#include <iterator>
#include <new>

#include "base/platform_log.h"
#include "effect/QxBevelProperty.h"
#include "effect/QxEffect.h"
#include "effect/QxStrokeProperty.h"
#include "effect/core_inputs.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"
#include "pixel/kernel/layers.h"

namespace QxFontEffect {
namespace {

constexpr char kTag[] = "QxEffect";
constexpr int kStrokeCentred = 0, kStrokeOutside = 1, kStrokeInside = 2;
constexpr int kBevelInside = 1;
constexpr int kNoRecord = -1;

bool isFill(QxECoreBase* core) {
    return core->getStyle() == QXE_TEXT;
}

bool isStroke(QxECoreBase& core) {
    return core.getStyle() == QXE_STROKE || core.getStyle() == QXE_STROKE_ALIAS;
}

int strokePosition(QxECoreBase& core) {
    const QxProperty* property = core.getProperty();
    return property == nullptr ? kNoRecord : static_cast<const QxStrokeProperty*>(property)->position;
}

bool isInnerBevel(QxECoreBase& core) {
    const QxProperty* property = core.getProperty();
    return property != nullptr && static_cast<const QxBevelProperty*>(property)->style == kBevelInside;
}

// A side no bitmap can have becomes 0: as an unsigned number it might just be allocated.
unsigned int sideFor(int pixels) {
    return static_cast<unsigned int>(std::max(pixels, 0));
}

uint8_t* rowOf(const QxBitmap& bitmap, uint32_t y) {
    return bitmap.pixels + size_t{y} * bitmap.width * bitmap.bytesPerPixel;
}

}  // namespace

bool QxEffect::isUnderEffect(QxECoreBase* core) {
    if (core == nullptr) return false;
    switch (core->getStyle()) {
        case QXE_BASE:
        case QXE_OUTER_SHADOW:
        case QXE_OUTER_GLOW:
            return true;
        case QXE_EMBOSS:
            return layerMode != 1;
        case QXE_STROKE:
        case QXE_STROKE_ALIAS:
            return strokePosition(*core) == kStrokeOutside ||
                   (strokePosition(*core) == kStrokeCentred && layerMode != 1);
        case QXE_BEVEL:
            return !isInnerBevel(*core);
        default:
            return false;
    }
}

void QxEffect::initEffect(int width, int height) {
    logDebug(kTag, "InitEffect(%p)", static_cast<void*>(this));
    layerMode = needsLayer() ? 1 : 0;
    makeBitmaps(width, height);

    renderList.clear();
    try {
        renderList.reserve(effects.size());
        layerMode == 1 ? orderForLayer() : orderForPlain();
    } catch (...) {
        // Without the list no core runs and the picture stays blank.
    }

    ParamInit init{width, height, layerMode};
    for (QxECoreBase* core : renderList) core->initEffect(&init);
    dstBitmap = nullptr;
}

bool QxEffect::needsLayer() {
    return textOpacity < 1.0f || std::any_of(effects.begin(), effects.end(), [](QxECoreBase* core) {
               return core->getStyle() == QXE_EMBOSS || (isStroke(*core) && strokePosition(*core) == kStrokeCentred);
           });
}

void QxEffect::makeBitmaps(int width, int height) {
    dropBitmaps();
    srcBitmap = ownSrcBitmap = new (std::nothrow) QxBitmap(sideFor(width), sideFor(height), 1);
    if (layerMode == 1) layerBitmap = new (std::nothrow) QxBitmap(sideFor(width), sideFor(height), 4);
}

void QxEffect::dropBitmaps() {
    delete ownSrcBitmap;
    delete layerBitmap;
    ownSrcBitmap = srcBitmap = layerBitmap = nullptr;
}

// The reverse of the order of adding, the fill last.
void QxEffect::orderForLayer() {
    renderList.assign(effects.rbegin(), effects.rend());
    const auto fill = std::find_if(renderList.begin(), renderList.end(), isFill);
    if (fill != renderList.end()) std::rotate(fill, fill + 1, renderList.end());
}

// What paints over the text, then the fill, then what lies beneath; the last added first in the outer groups.
void QxEffect::orderForPlain() {
    for (auto core = effects.rbegin(); core != effects.rend(); ++core)
        if (!isFill(*core) && !isUnderEffect(*core)) renderList.push_back(*core);
    std::copy_if(effects.begin(), effects.end(), std::back_inserter(renderList), isFill);
    for (auto core = effects.rbegin(); core != effects.rend(); ++core)
        if (isUnderEffect(*core)) renderList.push_back(*core);
}

void QxEffect::renderEffectLayer(int x, int y, QxGlyph* glyph) {
    if (glyph != nullptr && srcBitmap != nullptr) {
        const QxRect box(x, y, saturateToInt(int64_t{x} + glyph->width), saturateToInt(int64_t{y} + glyph->height));
        if (rectPending) textRect = box;
        rectPending = false;
        textRect.left = std::min(textRect.left, box.left);
        textRect.top = std::min(textRect.top, box.top);
        textRect.right = std::max(textRect.right, box.right);
        textRect.bottom = std::max(textRect.bottom, box.bottom);
        QxBlender::drawBitmap(x, y, srcBitmap, glyph->pixels, glyph->width, glyph->height, 0xFF000000u);
    }
    ParamRender render{x, y, glyph, dstBitmap};
    for (QxECoreBase* core : renderList) core->render(&render);
}

void QxEffect::doEffectPostProcessing() {
    logDebug(kTag, "DoEffectPostProcessing(%p) - start", static_cast<void*>(this));
    if (srcBitmap != nullptr) clampTextRect();
    // Without its layer a rendering would be half a picture, which is worse than none.
    const bool hasMemory = hasPixels(srcBitmap, 1) && (layerMode != 1 || hasPixels(layerBitmap, 4));
    if (hasMemory && textRect.right > textRect.left && textRect.bottom > textRect.top) {
        ParamPostProcessing param{dstBitmap, srcBitmap, &textRect, layerMode, nullptr};
        for (QxECoreBase* core : renderList) {
            if (layerMode == 1) chooseTarget(*core, param);
            core->doPostProcessing(&param);
        }
    }
    rectPending = true;
    logDebug(kTag, "DoEffectPostProcessing(%p) - end", static_cast<void*>(this));
}

void QxEffect::clampTextRect() {
    const int32_t width = sideOf(srcBitmap->width);
    const int32_t height = sideOf(srcBitmap->height);
    textRect.left = std::clamp(textRect.left, 0, width);
    textRect.top = std::clamp(textRect.top, 0, height);
    textRect.right = std::clamp(textRect.right, 0, width);
    textRect.bottom = std::clamp(textRect.bottom, 0, height);
}

// In layer mode what shows outside the glyphs goes into the layer, the rest into the output; what straddles the
// outline gets both.
void QxEffect::chooseTarget(QxECoreBase& core, ParamPostProcessing& param) {
    bool intoLayer = false;
    bool intoBoth = false;
    switch (core.getStyle()) {
        case QXE_BASE:
        case QXE_OUTER_SHADOW:
        case QXE_OUTER_GLOW:
            intoLayer = true;
            break;
        case QXE_BEVEL:
            intoLayer = !isInnerBevel(core);
            break;
        case QXE_EMBOSS:
            intoBoth = true;
            break;
        case QXE_STROKE:
        case QXE_STROKE_ALIAS:
            intoBoth = strokePosition(core) == kStrokeCentred;
            intoLayer = strokePosition(core) != kStrokeInside;
            break;
        default:
            break;
    }
    param.dstBitmap = intoLayer || intoBoth ? layerBitmap : dstBitmap;
    param.baseBitmap = intoBoth ? dstBitmap : nullptr;
}

void QxEffect::compositeLayers(QxBitmap* output) {
    logDebug(kTag, "CompositeLayers(%p) - start", static_cast<void*>(this));
    if (hasPixels(output, 4)) {
        const bool layered = layerMode == 1 && hasPixels(srcBitmap, 1) && hasPixels(layerBitmap, 4);
        const uint32_t joinedRows = layered ? std::min(srcBitmap->height, layerBitmap->height) : 0;
        const uint32_t joinedColumns = layered ? std::min({srcBitmap->width, layerBitmap->width, output->width}) : 0;
        for (uint32_t y = 0; y < output->height; ++y) {
            uint8_t* row = rowOf(*output, y);
            const uint32_t joined = y < joinedRows ? joinedColumns : 0;
            if (joined > 0) kernel::composeLayers(rowOf(*layerBitmap, y), rowOf(*srcBitmap, y), textAlpha, row, joined);
            kernel::composeLayers(nullptr, nullptr, textAlpha, row + size_t{4} * joined, output->width - joined);
        }
    }
    dropBitmaps();
    dstBitmap = nullptr;
    layerMode = 0;
    logDebug(kTag, "CompositeLayers(%p) - end", static_cast<void*>(this));
}

}  // namespace QxFontEffect
