#include "effect/QxEffect.h"

#include <algorithm>
#include <new>

#include "base/platform_log.h"
#include "effect/core_factory.h"
#include "effect/setting_rules.h"

namespace QxFontEffect {
namespace {

constexpr char kTag[] = "QxEffect";

bool makeRoom(std::vector<QxECoreBase*>& cores, size_t count) {
    try {
        cores.reserve(count);
    } catch (...) {
        return false;
    }
    return true;
}

template <typename Matches>
QxECoreBase* firstCore(const std::vector<QxECoreBase*>& cores, Matches matches) {
    const auto found = std::find_if(cores.begin(), cores.end(), matches);
    return found == cores.end() ? nullptr : *found;
}

int largestOffset(const std::vector<QxECoreBase*>& cores, int (QxECoreBase::*offset)()) {
    int largest = 0;
    for (QxECoreBase* core : cores) largest = std::max(largest, (core->*offset)());
    return largest;
}

// A core without its record is one whose memory failed: it draws nothing and its settings are lost.
bool takesProperty(QxECoreBase& core, QxProperty* property) {
    core.setProperty(property);
    return property == nullptr || core.getProperty() != nullptr;
}

}  // namespace

QxEffect::QxEffect() {
    logDebug(kTag, "QxEffect(%p)", static_cast<void*>(this));
}

QxEffect::QxEffect(void*) {}

QxEffect::QxEffect(const QxEffect& other)
    : layerMode(other.layerMode),
      textOpacity(other.textOpacity),
      textColor(other.textColor),
      nextEffectId(other.nextEffectId),
      textAlpha(other.textAlpha) {
    for (QxECoreBase* core : other.effects)
        addEffect(core->getId(), static_cast<int>(core->getStyle()), core->getProperty());
}

QxEffect::~QxEffect() {
    logDebug(kTag, "~QxEffect(%p)", static_cast<void*>(this));
    for (QxECoreBase* core : effects) releaseEffect(core);
    dropBitmaps();
}

bool QxEffect::hasEffects() {
    return !effects.empty() || textOpacity < 1.0f;
}

bool QxEffect::hasEffect(int type) {
    return getEffect(type) != nullptr;
}

int QxEffect::addEffect(int id, int type, QxProperty* property) {
    if (QxECoreBase* core = getEffect(type)) return takesProperty(*core, property) ? core->getId() : -1;

    const int32_t idBefore = nextEffectId;
    QxECoreBase* core = makeRoom(effects, effects.size() + 1) ? createEffect(id, type, nullptr) : nullptr;
    if (core == nullptr) return -1;
    if (!takesProperty(*core, property)) {
        releaseEffect(core);
        nextEffectId = idBefore;
        return -1;
    }
    effects.push_back(core);
    return core->getId();
}

int QxEffect::addEffect(int type, QxProperty* property) {
    return addEffect(-1, type, property);
}

QxECoreBase* QxEffect::createEffect(int id, int type, QxECoreBase*) {
    QxECoreBase* core = makeCore(type);
    if (core != nullptr) core->setId(id >= 0 ? id : getNewEffectId());
    return core;
}

int QxEffect::getNewEffectId() {
    const int32_t id = std::max(nextEffectId, 0);
    // After the largest id the numbers start again; the wrapped value is the mark of it.
    nextEffectId = static_cast<int32_t>(static_cast<uint32_t>(id) + 1u);
    return id;
}

bool QxEffect::removeEffect(int id) {
    QxECoreBase* core = firstCore(effects, [id](QxECoreBase* candidate) { return candidate->getId() == id; });
    if (core == nullptr) return false;
    effects.erase(std::find(effects.begin(), effects.end(), core));
    // A rendering that is under way must not run it any more.
    renderList.erase(std::remove(renderList.begin(), renderList.end(), core), renderList.end());
    releaseEffect(core);
    return true;
}

void QxEffect::releaseEffect(QxECoreBase* core) {
    delete core;
}

void QxEffect::cleanAllEffect() {
    for (QxECoreBase* core : effects) releaseEffect(core);
    effects.clear();
    renderList.clear();
    nextEffectId = 0;
}

QxECoreBase* QxEffect::getEffect(int type) {
    return firstCore(effects, [type](QxECoreBase* core) { return static_cast<int>(core->getStyle()) == type; });
}

void QxEffect::setTextOpacity(float opacity) {
    textOpacity = clamp01(opacity);
}
float QxEffect::getTextOpacity() {
    return textOpacity;
}
void QxEffect::clearTextOpacity() {
    textOpacity = 1.0f;
}
QxRect* QxEffect::getTextRect() {
    return &textRect;
}
QxBitmap* QxEffect::getSrcBitmap() {
    return srcBitmap;
}
void QxEffect::setSrcBitmap(QxBitmap* bitmap) {
    srcBitmap = bitmap;
}
QxBitmap* QxEffect::getDstBitmap() {
    return dstBitmap;
}
void QxEffect::setDstBitmap(QxBitmap* bitmap) {
    dstBitmap = bitmap;
}

int QxEffect::getLeftOffset() {
    return largestOffset(effects, &QxECoreBase::getLeftOffset);
}
int QxEffect::getRightOffset() {
    return largestOffset(effects, &QxECoreBase::getRightOffset);
}
int QxEffect::getTopOffset() {
    return largestOffset(effects, &QxECoreBase::getTopOffset);
}
int QxEffect::getBottomOffset() {
    return largestOffset(effects, &QxECoreBase::getBottomOffset);
}

char* QxEffect::getMapKey() {
    size_t length = 0;
    for (QxECoreBase* core : effects)
        if (QxProperty* property = core->getProperty())
            length += static_cast<size_t>(std::max(property->getSequentialCharLength(), 0));

    // Records with stops report more than they write, so the visible key may end before `length`; zeroes fill the gap.
    char* key = new (std::nothrow) char[length + 1]();
    if (key == nullptr) return nullptr;
    char* cursor = key;
    for (QxECoreBase* core : effects)
        if (QxProperty* property = core->getProperty()) property->toSequentialChar(&cursor);
    key[length] = '\0';
    return key;
}

char* QxEffect::getMapKey(unsigned int color) {
    textColor = color;
    addText(color, textOpacity);
    return getMapKey();
}

}  // namespace QxFontEffect
