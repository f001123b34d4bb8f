#pragma once

#include <hwui/Paint.h>

#include <cstdint>

namespace QxFontEffect {

class List;
class QxBitmap;
class QxEffect;
class QxFontDrawing;
class QxString;
class QxTextObject;
class QxView;

/// The state of a text object. A part whose memory could not be had is null; the methods that need it report that.
class QxTextObjectImpl {
public:
    explicit QxTextObjectImpl(QxTextObject* textObject);
    QxTextObjectImpl(const QxTextObjectImpl&) = delete;
    QxTextObjectImpl& operator=(const QxTextObjectImpl&) = delete;
    virtual ~QxTextObjectImpl();

    /// Makes the drawing driver if it is missing; false when that fails.
    bool ensureFontDrawing();

    /// Deletes all line records; the list stays.
    void clearLineInfo();

    QxTextObject* owner;
    QxString* text = nullptr;
    QxFontDrawing* fontDrawing = nullptr;
    QxEffect* effect = nullptr;
    List* lineInfo = nullptr;  ///< QxLineInfo records, owned like the list
    int32_t runtimeHandle = -1;
    uint32_t textStyle = 0;  ///< bit 0 bold, bit 1 italic
    QxBitmap* result = nullptr;
    QxView* view = nullptr;
    android::Paint paint;
    uint32_t backgroundColor = 0;
    bool backgroundEnabled = false;
    uint32_t textColor = 0xFF000000;
};

}  // namespace QxFontEffect
