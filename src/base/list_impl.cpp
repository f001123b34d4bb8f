#include "base/list_impl.h"

#include <new>

#include "base/Error.h"

namespace QxFontEffect {

bool failList(unsigned long code) {
    Error::SetError(code);
    return false;
}

void ListImpl::freeNodes() {
    while (head != nullptr) {
        ListNode* next = head->next;
        delete head;
        head = next;
    }
    tail = nullptr;
    count = 0;
}

void ListImpl::setCache(ListNode* node, int32_t index) {
    cacheNode = node;
    cacheIndex = index;
}

ListNode* ListImpl::nodeAt(int32_t index) const {
    const bool fromHead = cacheNode == nullptr || index <= cacheIndex / 2;
    if (!fromHead && index < cacheIndex) {
        ListNode* node = cacheNode;
        for (int32_t at = cacheIndex; at > index; --at) node = node->prev;
        return node;
    }
    ListNode* node = fromHead ? head : cacheNode;
    for (int32_t at = fromHead ? 0 : cacheIndex; at < index; ++at) node = node->next;
    return node;
}

bool ListImpl::find(const void* item, int32_t* index) const {
    ListNode* start = cacheNode != nullptr ? cacheNode : head;
    int32_t at = cacheNode != nullptr ? cacheIndex : 0;
    for (ListNode* node = start; node != nullptr; node = node->next, ++at) {
        if (node->data != item) continue;
        *index = at;
        return true;
    }
    at = 0;
    for (ListNode* node = head; node != start; node = node->next, ++at) {
        if (node->data != item) continue;
        *index = at;
        return true;
    }
    return false;
}

bool ListImpl::insertBefore(ListNode* next, void* item) {
    ListNode* prev = next != nullptr ? next->prev : tail;
    ListNode* node = new (std::nothrow) ListNode{prev, next, item};
    if (node == nullptr) return failList(1);
    (prev != nullptr ? prev->next : head) = node;
    (next != nullptr ? next->prev : tail) = node;
    ++count;
    return true;
}

void ListImpl::remove(ListNode* node, int32_t index) {
    // Only one cursor follows the list; any other on this node would be left dangling, so it ends.
    ListNode* follower = node->next;
    for (ListCursor& cursor : cursors) {
        if (!cursor.open || cursor.node != node) continue;
        cursor.node = follower;
        follower = nullptr;
    }
    (node->prev != nullptr ? node->prev->next : head) = node->next;
    (node->next != nullptr ? node->next->prev : tail) = node->prev;
    if (cacheNode == node && index > 0)
        setCache(node->prev, index - 1);
    else if (cacheNode == node)
        setCache(node->next, 0);
    else if (cacheNode != nullptr && index < cacheIndex)
        --cacheIndex;
    delete node;
    --count;
}

bool ListImpl::cursorOf(long handle, ListCursor** cursor) {
    if (handle == 0 || handle == -1) return failList(7);
    for (ListCursor& candidate : cursors) {
        if (!candidate.open || reinterpret_cast<long>(&candidate) != handle) continue;
        *cursor = &candidate;
        return true;
    }
    return failList(9);
}

bool ListImpl::step(long handle, ListNode* ListNode::*link, int32_t by) {
    ListCursor* cursor = nullptr;
    if (!cursorOf(handle, &cursor)) return false;
    if (cursor->node == nullptr) {
        cursor->node = head;
        return failList(9);
    }
    cursor->node = cursor->node->*link;
    // There is one cache for all cursors, and it need not be where this one is.
    if (cacheNode != nullptr) setCache(cacheNode->*link, cacheIndex + by);
    return true;
}

}  // namespace QxFontEffect
