#include "text/QxTextObjectImpl.h"

#include <new>

#include "base/List.h"
#include "base/QxString.h"
#include "base/list_walk.h"
#include "effect/QxEffect.h"
#include "pixel/QxBitmap.h"
#include "text/QxFontDrawing.h"
#include "text/QxLineInfo.h"
#include "text/QxView.h"

namespace QxFontEffect {

namespace {

List* makeList() {
    List* list = new (std::nothrow) List;
    if (list == nullptr || list->Construct()) return list;
    delete list;
    return nullptr;
}

QxView* makeView() {
    QxView* view = new (std::nothrow) QxView;
    if (view == nullptr) return nullptr;
    view->bitmapSize = new (std::nothrow) int32_t[2]();
    if (view->bitmapSize != nullptr) return view;
    delete view;
    return nullptr;
}

}  // namespace

QxTextObjectImpl::QxTextObjectImpl(QxTextObject* textObject)
    : owner(textObject),
      fontDrawing(new (std::nothrow) QxFontDrawing),
      effect(new (std::nothrow) QxEffect),
      lineInfo(makeList()),
      view(makeView()) {}

QxTextObjectImpl::~QxTextObjectImpl() {
    delete text;
    clearLineInfo();
    delete lineInfo;
    delete fontDrawing;
    delete effect;
    delete result;
    if (view != nullptr) delete[] view->bitmapSize;
    delete view;
}

bool QxTextObjectImpl::ensureFontDrawing() {
    if (fontDrawing == nullptr) fontDrawing = new (std::nothrow) QxFontDrawing;
    return fontDrawing != nullptr;
}

void QxTextObjectImpl::clearLineInfo() {
    if (lineInfo == nullptr) return;
    walkList(*lineInfo, false, [](void* item) {
        delete static_cast<QxLineInfo*>(item);
        return true;
    });
    lineInfo->RemoveAll();
}

}  // namespace QxFontEffect
