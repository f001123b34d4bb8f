#include "base/List.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "base/Error.h"
#include "support/random.h"

namespace QxFontEffect {
namespace {

using test::Rng;

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
            if (entries[static_cast<size_t>(i)].data == data) {
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
            if (entries[static_cast<size_t>(index)].data == data) return index;
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

/// Drives a list and its model with the same random operations.
class ListAgainstModel {
public:
    explicit ListAgainstModel(uint64_t seed) : mRng(seed) { EXPECT_TRUE(mList.Construct()); }

    void operate() {
        mModel.error = 0;
        Error::SetError(0);
        const int index = mRng.between(-1, mModel.count() + 1);
        void* item = mRng.oneIn(12) ? nullptr : &mItems[mRng.below(6)];
        const int slot = static_cast<int>(mRng.below(10));
        const bool open = mModel.cursors[slot].open;
        switch (mRng.below(open ? 16 : 10)) {
            case 0:
            case 1:
                EXPECT_TRUE(mList.Add(item));
                return mModel.insert(mModel.count(), item);
            case 2:
                return insert(index, item);
            case 3:
                EXPECT_EQ(mList.Remove(item), mModel.removeItem(item));
                return;
            case 4:
                EXPECT_EQ(mList.Remove(index), mModel.removeRange(index, 1));
                return;
            case 5:
                return removeRange(index, mRng.between(-1, 3));
            case 6:
                EXPECT_EQ(mList.GetIndex(item), mModel.find(item));
                return;
            case 7:
                return checkContained(item);
            case 8:
                return begin();
            case 9:
                return rare(slot);
            case 10:
            case 11:
                EXPECT_EQ(mList.NextData(mHandles[slot]), mModel.step(slot, 1));
                return;
            case 12:
                EXPECT_EQ(mList.PrevData(mHandles[slot]), mModel.step(slot, -1));
                return;
            case 13:
                EXPECT_EQ(mList.Move(mHandles[slot], index), mModel.move(slot, index));
                return;
            case 14:
                return moveToAnEnd(slot);
            default:
                EXPECT_TRUE(mList.EndTraversal(mHandles[slot]));
                return mModel.end(slot);
        }
    }

    void check() {
        EXPECT_EQ(Error::GetError(), mModel.error);
        ASSERT_EQ(mList.GetCount(), mModel.count());
        for (int i = 0; i < mModel.count(); ++i)
            ASSERT_EQ(mList.Get(i), mModel.entries[static_cast<size_t>(i)].data) << "index " << i;
        for (int slot = 0; slot < 10; ++slot) {
            const ModelList::Cursor& cursor = mModel.cursors[slot];
            const int index = cursor.serial == ModelList::kNone ? -1 : mModel.indexOf(cursor.serial);
            void* wanted = index < 0 ? nullptr : mModel.entries[static_cast<size_t>(index)].data;
            if (!cursor.open) continue;
            ASSERT_EQ(mList.GetData(mHandles[slot]), wanted) << "slot " << slot;
        }
        EXPECT_EQ(Error::GetError(), mModel.error) << "left behind by reading";
    }

private:
    void insert(int index, void* item) {
        EXPECT_EQ(mList.Insert(item, index), index >= 0);
        if (index < 0)
            mModel.error = 7;
        else
            mModel.insert(index, item);
    }

    void removeRange(int index, int n) { EXPECT_EQ(mList.Remove(index, n), mModel.removeRange(index, n)); }

    void checkContained(const void* item) {
        const bool wanted = mModel.find(item) >= 0;
        if (item == nullptr) mModel.error = 7;
        EXPECT_EQ(mList.IsContained(item), wanted);
    }

    void begin() {
        const int slot = mModel.begin();
        const long handle = mList.BeginTraversal();
        EXPECT_EQ(handle == -1, slot < 0);
        if (slot >= 0) mHandles[slot] = handle;
    }

    void moveToAnEnd(int slot) {
        const bool first = mRng.oneIn(2);
        EXPECT_TRUE(first ? mList.MoveFirst(mHandles[slot]) : mList.MoveLast(mHandles[slot]));
        mModel.cursors[slot].serial = mModel.cached = mModel.serialAt(first ? 0 : mModel.count() - 1);
    }

    void rare(int slot) {
        if (mRng.oneIn(4)) {
            EXPECT_TRUE(mList.RemoveAll());
            return mModel.removeAll();
        }
        if (mModel.count() > 40) return;
        // Adds the list to itself: through a cursor when there is one to spare, which costs the cached position.
        bool spare = false;
        for (const ModelList::Cursor& cursor : mModel.cursors) spare = spare || !cursor.open;
        const int count = mModel.count();
        for (int i = 0; i < count; ++i) mModel.insert(mModel.count(), mModel.entries[static_cast<size_t>(i)].data);
        if (spare && count > 0) mModel.cached = ModelList::kNone;
        EXPECT_TRUE(mList.Add(&mList)) << slot;
    }

    Rng mRng;
    List mList;
    ModelList mModel;
    long mHandles[10] = {};
    int mItems[6] = {};
};

TEST(List, EqualsAModelOverRandomOperations) {
    for (uint64_t seed = 1; seed <= 60; ++seed) {
        ListAgainstModel pair(seed);
        for (int step = 0; step < 600; ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
            pair.operate();
            pair.check();
            if (testing::Test::HasFailure()) return;
        }
    }
}

/// Whether all of these failed, the last one with this code; the slot is clean afterwards.
bool failedWith(int code, std::initializer_list<bool> failures) {
    bool right = Error::GetError() == code;
    for (const bool failure : failures) right = right && failure;
    Error::SetError(0);
    return right;
}

TEST(List, FailsBeforeConstructAndOnASecondConstruct) {
    List list, unmade, copy;
    int item = 0;
    EXPECT_TRUE(failedWith(8, {!list.Add(&item), !list.Insert(&item, 0), !list.Remove(&item), !list.Remove(0)}));
    EXPECT_TRUE(failedWith(8, {!list.RemoveAll(), list.GetCount() == -1, list.Get(0) == nullptr}));
    EXPECT_TRUE(failedWith(8, {list.GetIndex(&item) == -1, list.BeginTraversal() == -1, !list.EndTraversal(1)}));
    EXPECT_TRUE(failedWith(8, {list.GetData(1) == nullptr, !list.NextData(1), !list.Move(1, 0)}));

    void* items[] = {&item, nullptr, &item};
    EXPECT_TRUE(failedWith(7, {!list.Construct(&unmade), !list.Construct(nullptr, 1), !list.Construct(items, -1)}));
    ASSERT_TRUE(list.Construct(items, 3));
    EXPECT_TRUE(failedWith(4, {!list.Construct(), !list.Construct(items, 3), !list.Construct(&copy)}));
    EXPECT_TRUE(failedWith(7, {!list.Add(static_cast<const List*>(nullptr)), !list.Add(&unmade)}));
    EXPECT_EQ(list.GetCount(), 3);

    ASSERT_TRUE(copy.Construct(&list));
    EXPECT_EQ(copy.GetCount(), 3);
    EXPECT_EQ(copy.Get(1), nullptr);
    EXPECT_EQ(Error::GetError(), 0);
}

TEST(List, ContainsEveryItemOfAnother) {
    int a = 0, b = 0, c = 0;
    List list, part, empty;
    void* items[] = {&a, &b};
    ASSERT_TRUE(list.Construct(items, 2) && part.Construct(items + 1, 1) && empty.Construct());
    EXPECT_TRUE(list.IsContained(&part));
    EXPECT_TRUE(list.IsContained(&empty));
    ASSERT_TRUE(part.Add(&c));
    EXPECT_FALSE(list.IsContained(&part));
    EXPECT_TRUE(list.Add(static_cast<void*>(&part)));
    EXPECT_EQ(list.Get(2), &part) << "a cast stores the list itself";
}

TEST(List, RefusesHandlesThatAreNotItsOwn) {
    int item = 0;
    List list, other;
    ASSERT_TRUE(list.Construct() && other.Construct() && list.Add(&item) && other.Add(&item));
    const long foreign = other.BeginTraversal();
    const long ended = list.BeginTraversal();
    EXPECT_TRUE(list.EndTraversal(ended));
    EXPECT_TRUE(list.EndTraversal(ended)) << "ending twice is harmless";
    for (const long handle : {0L, -1L, foreign, ended, 12345L}) {
        const int code = handle == 0 || handle == -1 ? 7 : 9;
        for (const bool failed : {list.GetData(handle) == nullptr, !list.NextData(handle), !list.PrevData(handle),
                                  !list.Move(handle, 0), !list.MoveFirst(handle), !list.MoveLast(handle)})
            EXPECT_TRUE(failed) << handle;
        EXPECT_EQ(Error::GetError(), code) << handle;
    }
    EXPECT_EQ(other.GetData(foreign), &item);
}

TEST(List, IsFilledAndWalkedInLinearTime) {
    // Walking from an end at every step would take hours at this size.
    constexpr int kCount = 1000000;
    List list;
    ASSERT_TRUE(list.Construct());
    std::vector<char> items(kCount);
    for (char& item : items) ASSERT_TRUE(list.Add(&item));
    const long cursor = list.BeginTraversal();
    for (char& item : items) {
        ASSERT_EQ(list.GetData(cursor), &item);
        ASSERT_TRUE(list.NextData(cursor));
    }
    EXPECT_EQ(list.GetData(cursor), nullptr);
}

}  // namespace
}  // namespace QxFontEffect
