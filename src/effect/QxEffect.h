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

    virtual bool hasEffects();
    virtual bool hasEffect(int type);

    int addEffect(int id, int type, QxProperty* property);
    int addEffect(int type, QxProperty* property);
    QxECoreBase* createEffect(int id, int type, QxECoreBase* ignored);
    int getNewEffectId();
    bool removeEffect(int id);
    void releaseEffect(QxECoreBase* core);
    void cleanAllEffect();
    QxECoreBase* getEffect(int type);

    void setTextOpacity(float opacity);
    float getTextOpacity();
    void clearTextOpacity();
    QxRect* getTextRect();
    QxBitmap* getSrcBitmap();
    void setSrcBitmap(QxBitmap* bitmap);
    QxBitmap* getDstBitmap();
    void setDstBitmap(QxBitmap* bitmap);

    int getLeftOffset();
    int getRightOffset();
    int getTopOffset();
    int getBottomOffset();

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
    int addText(unsigned int color, float opacity);
    int addText(unsigned int color);

    char* getMapKey();
    char* getMapKey(unsigned int color);

    bool isUnderEffect(QxECoreBase* core);
    void initEffect(int width, int height);
    void renderEffectLayer(int x, int y, QxGlyph* glyph);
    void doEffectPostProcessing();
    void compositeLayers(QxBitmap* output);

    std::vector<QxECoreBase*> effects;     ///< in the order they were added, owned
    std::vector<QxECoreBase*> renderList;  ///< processing order of the current rendering, not owning
    QxBitmap* srcBitmap;                   ///< coverage of the current rendering, owned
    QxBitmap* dstBitmap;                   ///< output of the current rendering, not owned
    QxBitmap* layerBitmap;                 ///< colour layer, in layer mode only, owned
    QxRect textRect;                       ///< bounds of the glyphs drawn
    bool rectPending;                      ///< the next glyph starts `textRect` afresh
    int32_t layerMode;                     ///< 1 while compositing through `layerBitmap`
    float textOpacity;                     ///< 0..1
    uint32_t textColor;                    ///< last colour handed to `getMapKey`
    int32_t nextEffectId;
    int32_t textAlpha;                     ///< alpha byte of the last colour handed to `addText`, -1 before
};

}  // namespace QxFontEffect
