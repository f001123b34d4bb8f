#pragma once

#include <cstdint>
#include <vector>

#include "effect/QxECoreBase.h"
#include "effect/QxGradient.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxGlyph.h"
#include "pixel/QxRect.h"

namespace QxFontEffect {

/// The effect stack of one text object: at most one core a type, the order in which they run, the glyph coverage, and
/// the final composition. One rendering is `addText`, `initEffect`, `setDstBitmap`, `renderEffectLayer` per glyph,
/// `doEffectPostProcessing`, `compositeLayers`. Used from one thread at a time.
class QxEffect {
public:
    QxEffect();
    explicit QxEffect(void* unused);
    /// Recreates every core of `other` with its id and its own copy of the property; bitmaps are not copied.
    QxEffect(const QxEffect& other);
    QxEffect& operator=(const QxEffect&) = delete;
    virtual ~QxEffect();

    /// True with at least one core or a text opacity below 1.
    virtual bool hasEffects();
    virtual bool hasEffect(int type);

    /// Hands `property` to the core of this type, which is made first if there is none. The core copies the record;
    /// null leaves the core as it is.
    /// @param id    for a new core; negative takes the next free number. Ignored when the core exists.
    /// @param type  1..8 or 10..12, see QxEffectType.
    /// @return the core's id; -1 for any other type and when memory fails: then no core is added, and one that was
    ///         there has lost its record and draws nothing.
    int addEffect(int id, int type, QxProperty* property);
    int addEffect(int type, QxProperty* property);
    /// A new core that is not in the stack yet, the caller's; null for an unknown type.
    QxECoreBase* createEffect(int id, int type, QxECoreBase* ignored);
    /// Numbers from 0 on; starts again at 0 after the largest.
    int getNewEffectId();
    /// Deletes the core with this id; false when there is none.
    bool removeEffect(int id);
    void releaseEffect(QxECoreBase* core);
    /// Deletes all cores and starts the ids again at 0.
    void cleanAllEffect();
    /// The core of a type, owned by the stack, or null.
    QxECoreBase* getEffect(int type);

    /// Opacity of the whole text, limited to 0..1. Below 1 a rendering goes through the colour layer and `getMapKey`
    /// folds it into the fill; no picture is scaled by it.
    void setTextOpacity(float opacity);
    float getTextOpacity();
    void clearTextOpacity();
    QxRect* getTextRect();
    QxBitmap* getSrcBitmap();
    /// The two setters take no ownership.
    void setSrcBitmap(QxBitmap* bitmap);
    QxBitmap* getDstBitmap();
    void setDstBitmap(QxBitmap* bitmap);

    /// Margins in pixels that the effects paint outside the glyphs: the largest over the cores, never below 0.
    int getLeftOffset();
    int getRightOffset();
    int getTopOffset();
    int getBottomOffset();

    /// The adders limit and round a user's settings, build the record and call `addEffect`. Angles are degrees and are
    /// brought into 0..359 (altitudes 0..89), shadow, glow and stroke lengths become whole pixels in 0..100, opacities
    /// 0..1 and go into the alpha byte of the colours, whose own alpha is dropped. At most 256 stops are read; they are
    /// copied, with positions cut to hundredths.
    int addOuterShadowText(float angle, float distance, float size, unsigned int color, float opacity);
    int addInnerShadowText(float angle, float distance, float size, unsigned int color, float opacity);
    int addOuterGlowText(float size, unsigned int color, float opacity, int count, QxGradient* stops);
    int addInnerGlowText(float size, unsigned int color, float opacity, int count, QxGradient* stops);
    int addBevelText(int style, float size, float depth, int direction, int technique, int soften, float opacity,
                     float angle, float altitude, unsigned int highlightColor, float highlightOpacity,
                     unsigned int shadowColor, float shadowOpacity);
    int addEmbossText(int style, float size, float depth, int direction, int technique, int soften, float opacity,
                      float angle, float altitude, unsigned int highlightColor, float highlightOpacity,
                      unsigned int shadowColor, float shadowOpacity);
    int addLinearGradientText(float angle, float scale, float opacity, int count, QxGradient* stops);
    int addRadialGradientText(float scale, float opacity, int count, QxGradient* stops);
    int addStrokeText(float size, unsigned int color, float opacity, int mode, int position);
    int addPatternText(QxBitmap* pattern, float scale, float opacity);
    /// The fill. Its colour's alpha byte also becomes the strength of the whole picture, see `compositeLayers`.
    int addText(unsigned int color, float opacity);
    int addText(unsigned int color);

    /// A NUL-terminated string that identifies the cores and those settings that decide pixels: a key for a cache of
    /// pictures. The caller deletes it as an array; null when memory fails.
    char* getMapKey();
    /// The same after the fill was given `color` and the text opacity.
    char* getMapKey(unsigned int color);

    /// Whether a core's paint belongs beneath the text.
    bool isUnderEffect(QxECoreBase* core);
    /// Starts a rendering of width x height pixels: chooses layer mode and run order and makes blank bitmaps. A size
    /// that is negative or does not fit, or failing memory, leaves a rendering in which nothing is drawn.
    void initEffect(int width, int height);
    /// Adds a glyph's coverage at (x, y) and widens the text rectangle by its box. The glyph stays the caller's.
    void renderEffectLayer(int x, int y, QxGlyph* glyph);
    /// Runs every core over the text rectangle.
    void doEffectPostProcessing();
    /// Ends a rendering: in layer mode shows `output` inside the glyphs and the layer outside; then scales the picture
    /// by the text colour's alpha and turns premultiplied into straight colour. `output` should have the size given to
    /// `initEffect`; layers reach as far as both go.
    void compositeLayers(QxBitmap* output);

    std::vector<QxECoreBase*> effects;     ///< in the order they were added, owned
    std::vector<QxECoreBase*> renderList;  ///< processing order of the current rendering, not owning
    QxBitmap* srcBitmap = nullptr;         ///< coverage of the current rendering; owned unless a setter gave it
    QxBitmap* dstBitmap = nullptr;         ///< output of the current rendering, not owned
    QxBitmap* layerBitmap = nullptr;       ///< colour layer, in layer mode only, owned
    QxRect textRect;                       ///< bounds of the glyphs drawn; kept when a rendering draws none
    bool rectPending = true;               ///< the next glyph starts `textRect` afresh
    int32_t layerMode = 0;                 ///< 1 while compositing through `layerBitmap`
    float textOpacity = 1.0f;              ///< 0..1
    uint32_t textColor = 0xFF000000u;      ///< last colour handed to `getMapKey`
    int32_t nextEffectId = 0;              ///< source of new ids
    int32_t textAlpha = -1;                ///< alpha byte of the last colour handed to `addText`, -1 before

private:
    void dropBitmaps();
    void makeBitmaps(int width, int height);
    bool needsLayer();
    void orderForLayer();
    void orderForPlain();
    void clampTextRect();
    void chooseTarget(QxECoreBase& core, ParamPostProcessing& param);

    QxBitmap* ownSrcBitmap = nullptr;  ///< what `initEffect` made, to be deleted even when the setter replaced it
};

}  // namespace QxFontEffect
