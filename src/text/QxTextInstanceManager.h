#pragma once

namespace QxFontEffect {

class QxTextObject;

/// The process-wide registry of text objects: hands out their integer handles, counts who holds them, and deletes an
/// object through the release callback when its last holder lets go.
///
/// Handles run 1, 2, 3 ... and are never reused; -1 is no handle. Binding and registering are independent of each
/// other. The registry owns no object and reads none: a pointer is only a key here. An object that is deleted
/// directly keeps its binding, so bound objects are to be given back with `Release`.
///
/// Every operation may be called from any thread; one re-entrant lock guards them all. The callback runs under it,
/// so it must not wait for another thread.
class QxTextInstanceManager {
public:
    QxTextInstanceManager() = delete;

    /// Sets what deletes a released object, replacing the callback before. Null: released objects are dropped.
    static void SetCallBack(void (*callback)(QxTextObject*));

    /// The object's handle, a new one when it has none. -1 when memory or handles have run out.
    static int Register(QxTextObject* object);

    /// Forgets a handle; an unknown one is ignored.
    static void Unregister(int handle);

    /// Adds a holder. An object that waits for its deletion (see `Lock`) is kept after all.
    static void Bind(QxTextObject* object);

    /// Takes a holder away. Only the step from exactly one holder to none with `destroy` set deletes the object:
    /// without `destroy` the count goes to 0 and stays there, and a later call takes it to -1.
    ///
    /// @return false, with error 9, for an object that was never bound.
    static bool Release(QxTextObject* object, bool destroy);

    /// The same by handle, with `destroy` set. An unknown handle: false and error 9.
    static bool Release(int handle);

    /// Puts deletions off until `Unlock`. There is no nesting count.
    static void Lock();

    /// Deletes what was released since `Lock`, the most recently released first. Any thread may unlock.
    static void Unlock();

    /// -1 for an object that is not registered.
    static int FindQxTextHandle(QxTextObject* object);

    /// Null for an unknown handle.
    static QxTextObject* FindQxTextObject(int handle);
};

}  // namespace QxFontEffect
