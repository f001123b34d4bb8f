#pragma once

#include <cstdint>

namespace QxFontEffect {

struct ListNode {
    ListNode* prev;
    ListNode* next;
    void* data;
};

/// One of a list's cursors; its address is the traversal handle.
struct ListCursor {
    ListNode* node;  // null past the end
    bool open;
};

constexpr int kListCursors = 10;

/// Stores the error code and gives false. Lists have no log tag and write no line.
bool failList(unsigned long code);

/// The nodes, cursors and cached position behind a List.
struct ListImpl {
    ListNode* head = nullptr;
    ListNode* tail = nullptr;
    int32_t count = 0;
    int32_t openTraversals = 0;
    int32_t cacheIndex = -1;
    ListNode* cacheNode = nullptr;  // null when no position is cached; cacheIndex means nothing then
    ListCursor cursors[kListCursors] = {};

    ListImpl() = default;
    ListImpl(const ListImpl&) = delete;
    ListImpl& operator=(const ListImpl&) = delete;
    ~ListImpl() { freeNodes(); }

    void freeNodes();
    void setCache(ListNode* node, int32_t index);
    void clearCache() { setCache(nullptr, -999999999); }

    /// The node at a valid index, reached from the cached position or the head, whichever promises to be nearer.
    ListNode* nodeAt(int32_t index) const;
    /// Searches from the cached position to the tail, then from the head up to the cached position.
    bool find(const void* item, int32_t* index) const;
    /// Inserts before `next`; null appends. The cache is left alone.
    bool insertBefore(ListNode* next, void* item);
    /// Takes out the node, whose index is given, and adjusts cursors and cache.
    void remove(ListNode* node, int32_t index);

    /// Finds the open cursor of a handle, else fails with 7 (no handle) or 9 (not one of ours).
    bool cursorOf(long handle, ListCursor** cursor);
    /// Moves the handle's cursor along `link`, and the cached position with it, whose index changes by `by`.
    bool step(long handle, ListNode* ListNode::*link, int32_t by);
};

}  // namespace QxFontEffect
