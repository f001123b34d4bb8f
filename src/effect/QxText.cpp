#include "effect/QxText.h"

#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {

QxText::QxText() : property(nullptr) {
    style = QXE_TEXT;
}

QxText::~QxText() {
    delete property;
}

void QxText::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    replaceRecord(property, p->color, p->opacity);
}

void QxText::doPostProcessing(ParamPostProcessing* p) {
    if (!paintable(p, property)) return;

    // In layer mode the composition weights the fill by coverage; weighting it here too would thin the edges twice.
    const int mode = p->layerMode == 1 ? QXE_BLEND_DST_OVER_NSA : QXE_BLEND_OTHER;
    const ConstPlane8 coverage = coverageOf(*p->srcBitmap);
    QxBlender::drawBitmapBlend8(0, 0, p->dstBitmap, p->srcBitmap->pixels, coverage.width, coverage.height,
                                coverage.width, property->color, mode);
}

}  // namespace QxFontEffect
