#include "text/QxTextObject.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <new>

#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "base/no_throw.h"
#include "base/platform_log.h"
#include "effect/QxEffect.h"
#include "font/FontManager.h"
#include "pixel/QxBitmap.h"
#include "text/QxFontDrawing.h"
#include "text/QxTextInstanceManager.h"
#include "text/QxTextObjectImpl.h"
#include "text/QxView.h"
#include "text/result_picture.h"
#include "text/script_families.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxTextObject";

constexpr long kErrorConstructed = 4;
constexpr long kErrorArgument = 7;
constexpr long kErrorNotConstructed = 8;

constexpr uint32_t kBoldBit = 1;
constexpr uint32_t kItalicBit = 2;

constexpr unsigned int kOpaqueBlack = 0xFF000000;

std::unique_ptr<QxBitmap> makePicture(int width, int height) {
    if (width < 0 || height < 0) return nullptr;
    std::unique_ptr<QxBitmap> picture(
        new (std::nothrow) QxBitmap(static_cast<unsigned int>(width), static_cast<unsigned int>(height), 4));
    const bool hasPixels = picture != nullptr && (picture->pixels != nullptr || width == 0 || height == 0);
    return hasPixels ? std::move(picture) : nullptr;
}

}  // namespace

void __releaseQxTextCallback(QxTextObject* object) {
    logDebug(kTag, "Delete QxTextObject by InstanceManager : %p", static_cast<void*>(object));
    delete object;
}

QxTextObject::QxTextObject() : M(nullptr) {
    static std::once_flag callbackInstalled;
    std::call_once(callbackInstalled, [] { QxTextInstanceManager::SetCallBack(__releaseQxTextCallback); });
    logDebug(kTag, "QxTextObject(%p)", static_cast<void*>(this));
}

bool QxTextObject::Construct() {
    if (M != nullptr) return failWith(kTag, kErrorConstructed, 229);
    withoutThrowing([this] { M = new (std::nothrow) QxTextObjectImpl(this); });
    if (M == nullptr) return false;
    M->runtimeHandle = QxTextInstanceManager::Register(this);
    if (M->runtimeHandle == -1) {
        delete M;
        M = nullptr;
        return false;
    }
    logDebug(kTag, "Construct(%p / %d)", static_cast<void*>(this), M->runtimeHandle);
    return true;
}

QxTextObject::~QxTextObject() {
    if (M == nullptr) {
        failWith(kTag, kErrorNotConstructed, 217);
        return;
    }
    logDebug(kTag, "~QxTextObject(%p / %d)", static_cast<void*>(this), M->runtimeHandle);
    QxTextInstanceManager::Unregister(M->runtimeHandle);
    delete M;
    M = nullptr;
}

int QxTextObject::GetRuntimeHandle() const {
    if (M != nullptr) return M->runtimeHandle;
    failWith(kTag, kErrorNotConstructed, 374);
    return -1;
}

QxEffect* QxTextObject::GetEffect() {
    if (M != nullptr) return M->effect;
    failWith(kTag, kErrorNotConstructed, 382);
    return nullptr;
}

bool QxTextObject::SetText(const QxString* text) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 390);
    if (QxLog::IsAllLogEnable()) {
        logDebug(kTag, "SetText() - %p [%s] strLen=%d", static_cast<void*>(this), QxLog::ConvertLog(text),
                 text == nullptr ? 0 : text->GetLength());
    }
    return storeText(text);
}

bool QxTextObject::SetText(const wchar_t* text) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 426);
    return storeText(text);
}

template <typename Text>
bool QxTextObject::storeText(const Text* text) {
    if (text == nullptr) {
        delete M->text;
        M->text = nullptr;
        return true;
    }
    if (M->text == nullptr) {
        std::unique_ptr<QxString> empty(new (std::nothrow) QxString);
        if (empty == nullptr || !empty->Construct()) return false;
        M->text = empty.release();
    }
    if (!M->text->Set(text)) return false;
    withoutThrowing([this] { SetTextLocaleListId(); });
    return true;
}

void QxTextObject::SetTextLocaleListId() {
    if (M == nullptr) {
        failWith(kTag, kErrorNotConstructed, 460);
        return;
    }
    if (M->text == nullptr) {
        logDebug(kTag, "SetTextLocaleListId - text is null.");
        return;
    }
    const int length = M->text->GetUTF16Size();
    if (length == -1) return;
    const std::unique_ptr<const uint16_t[]> units(M->text->GetUTF16());
    if (units == nullptr) {
        logDebug(kTag, "SetTextLocaleListId - textString is null.");
        return;
    }
    if (length > 0) loadScriptFamilies(units.get(), static_cast<size_t>(length));
}

QxString* QxTextObject::GetText() {
    if (M != nullptr) return M->text;
    failWith(kTag, kErrorNotConstructed, 542);
    return nullptr;
}

bool QxTextObject::SetFontFamilyName(const char* family) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 549);
    if (family == nullptr) return failWith(kTag, kErrorArgument, 553);
    logDebug(kTag, "SetFontFamilyName(%p) - familyName[%s]", static_cast<void*>(this), family);
    if (!M->ensureFontDrawing()) return false;
    M->fontDrawing->SetFontFamilyName(family);
    return true;
}

bool QxTextObject::SetFont(const char* path) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 572);
    if (path == nullptr) return failWith(kTag, kErrorArgument, 576);
    logDebug(kTag, "SetFont(%p) - path[%s]", static_cast<void*>(this), path);
    return useFont(path, nullptr, 0);
}

bool QxTextObject::SetFont(const char* path, char* data, unsigned int size) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 600);
    if (path == nullptr) return failWith(kTag, kErrorArgument, 604);
    logDebug(kTag, "SetFont2(%p) - path[%s] - size: %d", static_cast<void*>(this), path, static_cast<int>(size));
    return useFont(path, data, size);
}

bool QxTextObject::useFont(const char* path, char* data, unsigned int size) {
    std::unique_ptr<char[]> owned(data);
    if (!M->ensureFontDrawing()) return false;
    if (!FontManager::GetInstance()->AddMinikinFont(path, owned.release(), size, 0, true)) return false;
    M->fontDrawing->SetFontPath(path);
    return true;
}

QxFontDrawing* QxTextObject::GetFont() {
    if (M != nullptr) return M->fontDrawing;
    failWith(kTag, kErrorNotConstructed, 628);
    return nullptr;
}

bool QxTextObject::SetLineInfo(const List* lineInfo) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 636);
    if (lineInfo == nullptr) {
        logError(kTag, "SetLineInfo - lineInfo is NULL");
        return failWith(kTag, kErrorArgument, 640);
    }
    if (M->lineInfo == nullptr) {
        logError(kTag, "SetLineInfo - M->lineInfo is NULL");
        return failWith(kTag, kErrorNotConstructed, 647);
    }
    M->clearLineInfo();
    return lineInfo->GetCount() > 0 ? M->lineInfo->Add(lineInfo) : true;
}

List* QxTextObject::GetLineInfo() {
    if (M != nullptr) return M->lineInfo;
    failWith(kTag, kErrorNotConstructed, 664);
    return nullptr;
}

QxTextObject* QxTextObject::FindQxTextObject(int handle) {
    return QxTextInstanceManager::FindQxTextObject(handle);
}

bool QxTextObject::SetTextStyle(bool bold, bool italic) {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 678);
    M->textStyle &= ~(kBoldBit | kItalicBit);
    M->textStyle |= (bold ? kBoldBit : 0) | (italic ? kItalicBit : 0);
    return true;
}

bool QxTextObject::isBoldTextStyle() {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 703);
    return (M->textStyle & kBoldBit) != 0;
}

bool QxTextObject::isItalicTextStyle() {
    if (M == nullptr) return failWith(kTag, kErrorNotConstructed, 710);
    return (M->textStyle & kItalicBit) != 0;
}

QxView* QxTextObject::GetView() {
    if (M != nullptr) return M->view;
    failWith(kTag, kErrorNotConstructed, 717);
    return nullptr;
}

android::Paint QxTextObject::GetPaint() {
    if (M != nullptr) return M->paint;
    failWith(kTag, kErrorNotConstructed, 724);
    return android::Paint();
}

void QxTextObject::SetPaint(android::Paint& paint) {
    if (M == nullptr) {
        failWith(kTag, kErrorNotConstructed, 730);
        return;
    }
    withoutThrowing([&] { M->paint = paint; });
}

void QxTextObject::SetBackgroundColor(unsigned int color, bool enabled) {
    if (M == nullptr) {
        failWith(kTag, kErrorNotConstructed, 736);
        return;
    }
    M->backgroundColor = color;
    M->backgroundEnabled = enabled;
}

void QxTextObject::SetTextColor(unsigned int color) {
    if (M == nullptr) {
        failWith(kTag, kErrorNotConstructed, 743);
        return;
    }
    M->textColor = color;
}

unsigned int QxTextObject::GetTextColor() {
    if (M != nullptr) return M->textColor;
    failWith(kTag, kErrorNotConstructed, 749);
    return kOpaqueBlack;
}

unsigned char* QxTextObject::RenderTextEffect(int width, int height) {
    if (M == nullptr) {
        failWith(kTag, kErrorNotConstructed, 248);
        return nullptr;
    }
    logDebug(kTag, "RenderTextEffect(%p / %d) >>> Start! - (w=%d,h=%d)", static_cast<void*>(this), M->runtimeHandle,
             width, height);
    const std::unique_ptr<QxBitmap> effects = makePicture(width, height);
    if (M->fontDrawing == nullptr) {
        failWith(kTag, kErrorNotConstructed, 266);
        return M->result == nullptr ? nullptr : M->result->pixels;
    }
    if (effects == nullptr) return nullptr;
    M->fontDrawing->DrawTextEffect(this, effects.get());

    std::unique_ptr<QxBitmap> output = makePicture(width, height);
    if (output == nullptr) return nullptr;
    const LineBackgrounds backgrounds = {M->backgroundEnabled ? M->lineInfo : nullptr, M->backgroundColor};
    if (!withoutThrowing(
            [&] { composeResult(contentClip(M->view, width, height), backgrounds, effects.get(), output.get()); })) {
        return nullptr;
    }
    delete M->result;
    M->result = output.release();
    logDebug(kTag, "RenderTextEffect(%p / %d) <<< End.", static_cast<void*>(this), M->runtimeHandle);
    return M->result->pixels;
}

}  // namespace QxFontEffect
