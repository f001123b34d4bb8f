#pragma once

#include <cstdint>

#include "effect/ParamInit.h"
#include "effect/ParamPostProcessing.h"
#include "effect/ParamRender.h"
#include "effect/QxProperty.h"
#include "effect/kernel/sqrt_table.h"

namespace QxFontEffect {

/// Effect type numbers, reported by `getStyle()`.
enum QxEffectType : int {
    QXE_OUTER_SHADOW = 1,
    QXE_INNER_SHADOW = 2,
    QXE_OUTER_GLOW = 3,
    QXE_INNER_GLOW = 4,
    QXE_BEVEL = 5,
    QXE_EMBOSS = 6,
    QXE_LINEAR_GRADIENT = 7,
    QXE_RADIAL_GRADIENT = 8,
    QXE_STROKE_ALIAS = 9,  ///< no core has it; the stack treats it like a stroke when it chooses a destination
    QXE_STROKE = 10,
    QXE_PATTERN = 11,
    QXE_TEXT = 12,
    QXE_BASE = 13,  ///< an object that no derived constructor has finished
};

/// An effect: holds its own copy of a property record and paints into a bitmap when the effect stack runs it.
///
/// Offsets are the margins in pixels that the effect paints outside the glyph box; the stack takes the largest over
/// its cores. Nothing here reports errors: what cannot be drawn is not drawn.
class QxECoreBase {
public:
    QxECoreBase() : style(QXE_BASE), id(-1) {}
    QxECoreBase(const QxECoreBase&) = delete;
    QxECoreBase& operator=(const QxECoreBase&) = delete;
    virtual ~QxECoreBase() = default;

    virtual int initEffect(ParamInit*) { return 1; }
    virtual void render(ParamRender*) {}
    virtual void doPostProcessing(ParamPostProcessing*) {}

    /// Replaces the core's record by a new one built from `p`'s values. Null is ignored; `p` stays the caller's.
    virtual void setProperty(QxProperty* p) = 0;
    /// The core's own record, null before the first `setProperty`.
    virtual QxProperty* getProperty() = 0;

    virtual float getOpacity() { return 1.0f; }
    virtual unsigned int getStyle() { return style; }
    virtual int getLeftOffset() { return getOffset(); }
    virtual int getRightOffset() { return getOffset(); }
    virtual int getTopOffset() { return getOffset(); }
    virtual int getBottomOffset() { return getOffset(); }
    virtual void setId(int newId) { id = newId; }
    virtual int getId() { return id; }
    virtual int getOffset() { return 0; }

    uint32_t style;  ///< effect type number
    int32_t id;      ///< given by the effect stack, -1 until then
};

}  // namespace QxFontEffect
