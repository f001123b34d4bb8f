#include "text/QxTextInstanceManager.h"

#include <cstdint>
#include <limits>
#include <list>
#include <map>

#include "base/Mutex.h"
#include "base/immortal.h"
#include "base/no_throw.h"
#include "base/platform_log.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxTextInstanceManager";
constexpr long kErrorUnknown = 9;

struct Registry {
    Registry() { mutex.Construct(); }

    // Re-entrant: releasing an object under the lock deletes it, and its destructor unregisters it. Without memory
    // for the lock the registry works unlocked.
    Mutex mutex;
    std::map<QxTextObject*, int32_t> bindCounts;
    std::map<int32_t, QxTextObject*> objects;
    std::map<QxTextObject*, int32_t> handles;
    std::list<QxTextObject*> parked;  // released while locked, the latest first
    void (*callback)(QxTextObject*) = nullptr;
    bool locked = false;
    int32_t lastHandle = 0;

    void destroy(QxTextObject* object) const {
        if (callback != nullptr) callback(object);
    }
};

// Holds the lock as long as it lives and gives the registry meanwhile.
class LockedRegistry {
public:
    LockedRegistry() : mRegistry(instance()) { mRegistry.mutex.Lock(); }
    ~LockedRegistry() { mRegistry.mutex.Unlock(); }
    LockedRegistry(const LockedRegistry&) = delete;
    LockedRegistry& operator=(const LockedRegistry&) = delete;

    Registry* operator->() const { return &mRegistry; }

private:
    static Registry& instance() {
        static Immortal<Registry> registry;
        return registry.value;
    }

    Registry& mRegistry;
};

}  // namespace

void QxTextInstanceManager::SetCallBack(void (*callback)(QxTextObject*)) {
    LockedRegistry()->callback = callback;
}

int QxTextInstanceManager::Register(QxTextObject* object) {
    const LockedRegistry registry;
    const auto known = registry->handles.find(object);
    if (known != registry->handles.end()) return known->second;
    if (registry->lastHandle == std::numeric_limits<int32_t>::max()) return -1;

    const int32_t handle = registry->lastHandle + 1;
    if (!withoutThrowing([&] { registry->objects.emplace(handle, object); })) return -1;
    if (!withoutThrowing([&] { registry->handles.emplace(object, handle); })) {
        registry->objects.erase(handle);
        return -1;
    }
    registry->lastHandle = handle;
    return handle;
}

void QxTextInstanceManager::Unregister(int handle) {
    const LockedRegistry registry;
    const auto known = registry->objects.find(handle);
    if (known == registry->objects.end()) return;
    registry->handles.erase(known->second);
    registry->objects.erase(known);
}

void QxTextInstanceManager::Bind(QxTextObject* object) {
    const LockedRegistry registry;
    const auto bound = registry->bindCounts.find(object);
    if (bound != registry->bindCounts.end()) {
        ++bound->second;
        logDebug(kTag, "Bind(%p) - count: %d", static_cast<void*>(object), bound->second);
        return;
    }
    if (!withoutThrowing([&] { registry->bindCounts.emplace(object, 1); })) return;
    registry->parked.remove(object);
    logDebug(kTag, "Bind(%p) - count: %d", static_cast<void*>(object), 1);
}

bool QxTextInstanceManager::Release(QxTextObject* object, bool destroy) {
    const LockedRegistry registry;
    const auto bound = registry->bindCounts.find(object);
    if (bound == registry->bindCounts.end()) return failWith(kTag, kErrorUnknown, 126);

    if (bound->second != 1 || !destroy) {
        --bound->second;
        return true;
    }
    if (registry->locked) {
        if (!withoutThrowing([&] { registry->parked.push_front(object); })) return false;
        registry->bindCounts.erase(bound);
        return true;
    }
    // The binding goes first: the callback may make and bind a new object at the very address it frees, and that
    // binding is not the one to drop.
    registry->bindCounts.erase(bound);
    registry->destroy(object);
    return true;
}

bool QxTextInstanceManager::Release(int handle) {
    const LockedRegistry registry;
    const auto known = registry->objects.find(handle);
    if (known == registry->objects.end()) return failWith(kTag, kErrorUnknown, 109);
    return Release(known->second, true);
}

void QxTextInstanceManager::Lock() {
    LockedRegistry()->locked = true;
}

void QxTextInstanceManager::Unlock() {
    const LockedRegistry registry;
    // Taken one by one: still locked, a callback that releases another object parks it here.
    while (!registry->parked.empty()) {
        QxTextObject* const object = registry->parked.front();
        registry->parked.pop_front();
        registry->destroy(object);
    }
    registry->locked = false;
}

int QxTextInstanceManager::FindQxTextHandle(QxTextObject* object) {
    const LockedRegistry registry;
    const auto known = registry->handles.find(object);
    return known == registry->handles.end() ? -1 : known->second;
}

QxTextObject* QxTextInstanceManager::FindQxTextObject(int handle) {
    const LockedRegistry registry;
    const auto known = registry->objects.find(handle);
    if (known != registry->objects.end()) return known->second;
    logDebug(kTag, "FindQxTextObject() - Can't find the handle[%d]", handle);
    return nullptr;
}

}  // namespace QxFontEffect
