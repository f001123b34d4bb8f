#pragma once

#include <algorithm>
#include <vector>

#include "base/Error.h"
#include "base/List.h"

namespace QxFontEffect::test {

/// What a list must do, on a vector. Entries are told apart by serial numbers, so positions are looked up instead of
/// being kept up to date as the list keeps them.
class ModelList {
public:
    struct Entry {
        int serial;
        void* data;
    };
    static constexpr int kNone = -1;

    struct Cursor {
        bool open = false;
        int serial = kNone;  // none: past the end
    };

    std::vector<Entry> entries;
    Cursor cursors[10];
    int cached = kNone;
    int error = 0;  // set by the last operation, 0 for none

    int count() const { return static_cast<int>(entries.size()); }
    int indexOf(int serial) const {
        for (int i = 0; i < count(); ++i)
            if (entries[static_cast<size_t>(i)].serial == serial) return i;
        return -1;
    }
    /// Null outside the list.
    void* dataAt(int index) const {
        return index >= 0 && index < count() ? entries[static_cast<size_t>(index)].data : nullptr;
    }
    int serialAt(int index) const {
        return index >= 0 && index < count() ? entries[static_cast<size_t>(index)].serial : kNone;
    }

    void insert(int index, void* data) {
        entries.insert(entries.begin() + std::min(index, count()), Entry{mNextSerial++, data});
    }

    void removeAt(int index) {
        const int serial = serialAt(index);
        int follower = serialAt(index + 1);
        for (Cursor& cursor : cursors)
            if (cursor.open && cursor.serial == serial) {
                cursor.serial = follower;
                follower = kNone;
            }
        if (cached == serial) cached = serialAt(index > 0 ? index - 1 : 1);
        entries.erase(entries.begin() + index);
    }

    bool removeItem(const void* data) {
        if (data == nullptr || entries.empty()) return fail(7);
        for (int i = 0; i < count(); ++i)
            if (dataAt(i) == data) {
                removeAt(i);
                break;
            }
        return true;
    }

    bool removeRange(int index, int n) {
        if (index < 0 || index >= count() || n < 0 || n > count()) return fail(3);
        for (; n > 0; --n) {
            if (index >= count()) return fail(3);
            removeAt(index);
        }
        return true;
    }

    void removeAll() {
        if (entries.empty()) return;
        entries.clear();
        for (Cursor& cursor : cursors) cursor.serial = kNone;
        cached = kNone;
    }

    int find(const void* data) {
        if (data == nullptr) return fail(8), -1;
        const int start = std::max(indexOf(cached), 0);
        for (int i = 0; i < count(); ++i) {
            const int index = (start + i) % count();
            if (dataAt(index) == data) return index;
        }
        return -1;
    }

    int begin() {
        for (int slot = 0; slot < 10; ++slot)
            if (!cursors[slot].open) {
                cursors[slot] = {true, serialAt(0)};
                cached = serialAt(0);
                return slot;
            }
        return fail(2), -1;
    }

    bool step(int slot, int by) {
        Cursor& cursor = cursors[slot];
        if (cursor.serial == kNone) {
            cursor.serial = serialAt(0);
            return fail(9);
        }
        cursor.serial = serialAt(indexOf(cursor.serial) + by);
        if (cached != kNone) cached = serialAt(indexOf(cached) + by);
        return true;
    }

    bool move(int slot, int index) {
        if (index < 0 || index >= count()) return fail(3);
        cursors[slot].serial = cached = serialAt(index);
        return true;
    }

    void end(int slot) {
        cursors[slot] = {};
        cached = kNone;
    }

private:
    bool fail(int code) {
        error = code;
        return false;
    }
    int mNextSerial = 0;
};

/// Drives a list and its model with the same operations.
///
/// @tparam Numbers  where they come from: below(n), between(lowest, highest) and oneIn(n) as of Rng; between may give
/// any
///                  number.
template <typename Numbers>
class ListAgainstModel {
public:
    explicit ListAgainstModel(Numbers& numbers) : mNumbers(numbers) { holds(mList.Construct(), "Construct"); }

    /// What differed first, null as long as nothing did.
    const char* fault() const { return mFault; }

    void operate() {
        mModel.error = 0;
        Error::SetError(0);
        const int index = mNumbers.between(-1, mModel.count() + 1);
        void* item = mNumbers.oneIn(12) ? nullptr : &mItems[mNumbers.below(6)];
        const int slot = static_cast<int>(mNumbers.below(10));
        const bool open = mModel.cursors[slot].open;
        switch (mNumbers.below(open ? 16 : 10)) {
            case 0:
            case 1:
                holds(mList.Add(item), "Add");
                return mModel.insert(mModel.count(), item);
            case 2:
                return insert(index, item);
            case 3:
                return holds(mList.Remove(item) == mModel.removeItem(item), "Remove of an item");
            case 4:
                return holds(mList.Remove(index) == mModel.removeRange(index, 1), "Remove");
            case 5:
                return removeRange(index, mNumbers.between(-1, 3));
            case 6:
                return holds(mList.GetIndex(item) == mModel.find(item), "GetIndex");
            case 7:
                return checkContained(item);
            case 8:
                return begin();
            case 9:
                return rare();
            case 10:
            case 11:
                return holds(mList.NextData(mHandles[slot]) == mModel.step(slot, 1), "NextData");
            case 12:
                return holds(mList.PrevData(mHandles[slot]) == mModel.step(slot, -1), "PrevData");
            case 13:
                return holds(mList.Move(mHandles[slot], index) == mModel.move(slot, index), "Move");
            case 14:
                return moveToAnEnd(slot);
            default:
                holds(mList.EndTraversal(mHandles[slot]), "EndTraversal");
                return mModel.end(slot);
        }
    }

    void check() {
        holds(Error::GetError() == mModel.error, "the error");
        holds(mList.GetCount() == mModel.count(), "GetCount");
        for (int i = 0; i < mModel.count(); ++i) holds(mList.Get(i) == mModel.dataAt(i), "Get");
        for (int slot = 0; slot < 10; ++slot) {
            const ModelList::Cursor& cursor = mModel.cursors[slot];
            if (cursor.open)
                holds(mList.GetData(mHandles[slot]) == mModel.dataAt(mModel.indexOf(cursor.serial)), "GetData");
        }
        holds(Error::GetError() == mModel.error, "the error after reading");
    }

private:
    void holds(bool condition, const char* what) {
        if (!condition && mFault == nullptr) mFault = what;
    }

    void insert(int index, void* item) {
        holds(mList.Insert(item, index) == (index >= 0), "Insert");
        if (index < 0)
            mModel.error = 7;
        else
            mModel.insert(index, item);
    }

    void removeRange(int index, int n) {
        holds(mList.Remove(index, n) == mModel.removeRange(index, n), "Remove of a range");
    }

    void checkContained(const void* item) {
        const bool wanted = mModel.find(item) >= 0;
        if (item == nullptr) mModel.error = 7;
        holds(mList.IsContained(item) == wanted, "IsContained");
    }

    void begin() {
        const int slot = mModel.begin();
        const long handle = mList.BeginTraversal();
        holds((handle == -1) == (slot < 0), "BeginTraversal");
        if (slot >= 0) mHandles[slot] = handle;
    }

    void moveToAnEnd(int slot) {
        const bool first = mNumbers.oneIn(2);
        holds(first ? mList.MoveFirst(mHandles[slot]) : mList.MoveLast(mHandles[slot]), "MoveFirst or MoveLast");
        mModel.cursors[slot].serial = mModel.cached = mModel.serialAt(first ? 0 : mModel.count() - 1);
    }

    void rare() {
        if (mNumbers.oneIn(4)) {
            holds(mList.RemoveAll(), "RemoveAll");
            return mModel.removeAll();
        }
        if (mModel.count() > 40) return;
        // Adds the list to itself: through a cursor when there is one to spare, which costs the cached position.
        bool spare = false;
        for (const ModelList::Cursor& cursor : mModel.cursors) spare = spare || !cursor.open;
        const int count = mModel.count();
        for (int i = 0; i < count; ++i) mModel.insert(mModel.count(), mModel.dataAt(i));
        if (spare && count > 0) mModel.cached = ModelList::kNone;
        holds(mList.Add(&mList), "Add of itself");
    }

    Numbers& mNumbers;
    List mList;
    ModelList mModel;
    const char* mFault = nullptr;
    long mHandles[10] = {};
    int mItems[6] = {};
};

}  // namespace QxFontEffect::test
