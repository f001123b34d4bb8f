#include "base/List.h"

#include <cstdint>
#include <new>

#include "base/list_impl.h"

namespace QxFontEffect {

List::~List() {
    delete mImpl;
}

bool List::Construct() {
    if (mImpl != nullptr) return failList(4);
    mImpl = new (std::nothrow) ListImpl();
    return mImpl != nullptr || failList(1);
}

bool List::Construct(const List* other) {
    if (mImpl != nullptr) return failList(4);
    if (other == nullptr || other->mImpl == nullptr) return failList(7);
    return Construct() && Add(other);
}

bool List::Construct(void** items, int n) {
    if (mImpl != nullptr) return failList(4);
    if (items == nullptr || n < 0) return failList(7);
    if (!Construct()) return false;
    for (int i = 0; i < n; ++i)
        if (!Add(items[i])) return false;
    return true;
}

bool List::Add(void* item) {
    if (mImpl == nullptr) return failList(8);
    return mImpl->insertBefore(nullptr, item);
}

bool List::Add(const List* other) {
    if (mImpl == nullptr) return failList(8);
    if (other == nullptr || other->mImpl == nullptr) return failList(7);
    ListImpl& from = *other->mImpl;
    // The count is taken first: `other` may be this list and grow meanwhile.
    const int32_t count = from.count;
    const bool withCursor = count > 0 && from.openTraversals < kListCursors;
    ListNode* node = from.head;
    for (int32_t i = 0; i < count; ++i, node = node->next)
        if (!mImpl->insertBefore(nullptr, node->data)) return false;
    // Reading through a cursor and closing it leaves the other list without a cached position.
    if (withCursor) from.clearCache();
    return true;
}

bool List::Insert(void* item, int index) {
    if (mImpl == nullptr) return failList(8);
    if (index < 0) return failList(7);
    if (index >= mImpl->count) return mImpl->insertBefore(nullptr, item);
    if (!mImpl->insertBefore(mImpl->nodeAt(index), item)) return false;
    if (mImpl->cacheNode != nullptr && index <= mImpl->cacheIndex) ++mImpl->cacheIndex;
    return true;
}

bool List::Remove(void* item) {
    if (mImpl == nullptr) return failList(8);
    if (item == nullptr || mImpl->count == 0) return failList(7);
    int32_t index = 0;
    for (ListNode* node = mImpl->head; node != nullptr; node = node->next, ++index) {
        if (node->data != item) continue;
        mImpl->remove(node, index);
        break;
    }
    return true;
}

bool List::Remove(int index) {
    if (mImpl == nullptr) return failList(8);
    if (index < 0 || index >= mImpl->count) return failList(3);
    mImpl->remove(mImpl->nodeAt(index), index);
    return true;
}

bool List::Remove(int index, int n) {
    if (mImpl == nullptr) return failList(8);
    if (index < 0 || index >= mImpl->count || n < 0 || n > mImpl->count) return failList(3);
    for (int i = 0; i < n; ++i)
        if (!Remove(index)) return false;
    return true;
}

bool List::RemoveAll() {
    if (mImpl == nullptr) return failList(8);
    if (mImpl->count == 0) return true;
    mImpl->freeNodes();
    for (ListCursor& cursor : mImpl->cursors) cursor.node = nullptr;
    mImpl->clearCache();
    return true;
}

int List::GetCount() const {
    if (mImpl != nullptr) return mImpl->count;
    failList(8);
    return -1;
}

void* List::Get(int index) const {
    if (mImpl == nullptr || index < 0 || index >= mImpl->count) {
        failList(mImpl == nullptr ? 8 : 3);
        return nullptr;
    }
    return mImpl->nodeAt(index)->data;
}

int List::GetIndex(const void* item) const {
    if (mImpl == nullptr || item == nullptr) {
        failList(8);
        return -1;
    }
    int32_t index = -1;
    return mImpl->find(item, &index) ? index : -1;
}

bool List::IsContained(const void* item) const {
    if (mImpl == nullptr) return failList(8);
    if (item == nullptr) return failList(7);
    int32_t index = -1;
    return mImpl->find(item, &index);
}

bool List::IsContained(const List* other) const {
    if (mImpl == nullptr) return failList(8);
    if (other == nullptr || other->mImpl == nullptr) return failList(7);
    for (const ListNode* node = other->mImpl->head; node != nullptr; node = node->next)
        if (!IsContained(node->data)) return false;
    return true;
}

long List::BeginTraversal() const {
    if (mImpl == nullptr || mImpl->openTraversals == kListCursors) {
        failList(mImpl == nullptr ? 8 : 2);
        return -1;
    }
    ListCursor* slot = mImpl->cursors;
    while (slot->open) ++slot;
    *slot = {mImpl->head, true};
    ++mImpl->openTraversals;
    mImpl->setCache(mImpl->head, 0);
    return reinterpret_cast<long>(slot);
}

void* List::GetData(long handle) const {
    ListCursor* cursor = nullptr;
    if (mImpl == nullptr)
        failList(8);
    else if (mImpl->cursorOf(handle, &cursor) && cursor->node != nullptr)
        return cursor->node->data;
    return nullptr;
}

bool List::NextData(long handle) const {
    if (mImpl == nullptr) return failList(8);
    return mImpl->step(handle, &ListNode::next, 1);
}

bool List::PrevData(long handle) const {
    if (mImpl == nullptr) return failList(8);
    return mImpl->step(handle, &ListNode::prev, -1);
}

bool List::Move(long handle, int index) const {
    if (mImpl == nullptr) return failList(8);
    ListCursor* cursor = nullptr;
    if (!mImpl->cursorOf(handle, &cursor)) return false;
    if (index < 0 || index >= mImpl->count) return failList(3);
    cursor->node = mImpl->nodeAt(index);
    mImpl->setCache(cursor->node, index);
    return true;
}

bool List::MoveFirst(long handle) const {
    if (mImpl == nullptr) return failList(8);
    ListCursor* cursor = nullptr;
    if (!mImpl->cursorOf(handle, &cursor)) return false;
    cursor->node = mImpl->head;
    mImpl->setCache(mImpl->head, 0);
    return true;
}

bool List::MoveLast(long handle) const {
    if (mImpl == nullptr) return failList(8);
    ListCursor* cursor = nullptr;
    if (!mImpl->cursorOf(handle, &cursor)) return false;
    cursor->node = mImpl->tail;
    mImpl->setCache(mImpl->tail, mImpl->count - 1);
    return true;
}

bool List::EndTraversal(long handle) const {
    if (mImpl == nullptr) return failList(8);
    if (handle == 0 || handle == -1) return failList(7);
    for (ListCursor& cursor : mImpl->cursors) {
        if (!cursor.open || reinterpret_cast<long>(&cursor) != handle) continue;
        cursor = {};
        --mImpl->openTraversals;
    }
    mImpl->clearCache();
    return true;
}

}  // namespace QxFontEffect
