#pragma once

namespace QxFontEffect {

struct ListImpl;

/// A doubly linked list of untyped pointers. It never owns what they point to.
///
/// Made in two steps: the constructor makes an empty shell, `Construct` the list. Up to ten cursors can be open at a
/// time; a cursor stands on an item or past the end. The list also remembers one position (the cache) to shorten
/// indexed walks: opening a cursor and the Move operations set it, NextData and PrevData of any cursor shift it,
/// ending any cursor clears it. `Get` uses it and leaves it where it is.
///
/// Results are true or false unless stated. A failing operation stores the code in brackets with `Error::SetError`
/// and changes nothing; it writes no log line. On a list that is not constructed every operation fails with [8]. A
/// list argument that is null or not constructed fails with [7]. A handle of 0 or -1 fails with [7], one that is
/// not open in this list with [9]. [1]: out of memory; what was appended until then stays.
///
/// Null items may be stored, but not searched for. A `List*` given to `Add` or `IsContained` means its items; cast
/// it to `void*` to mean the pointer. No operation locks, and reading moves the cache: one list is used by one thread
/// at a time.
class List {
public:
    List() = default;
    List(const List&) = delete;
    List& operator=(const List&) = delete;
    /// Frees the list and its cursors. Handles of cursors still open become invalid.
    virtual ~List();

    /// Makes an empty list. Already constructed: [4]; so for every form.
    bool Construct();
    /// Makes a list of the other's items.
    bool Construct(const List* other);
    /// Makes a list of n items. Null items or negative n: [7].
    bool Construct(void** items, int n);

    /// Appends an item.
    bool Add(void* item);
    /// Appends every item of `other`, which may be this list. Reading takes a cursor of `other` where one is free, so
    /// it clears the cache of `other`.
    bool Add(const List* other);

    /// Inserts before the item at `index`; appends when index >= count. Negative index: [7].
    bool Insert(void* item, int index);

    /// Removes the first entry that equals `item`, searching from the head. An absent item is a success. Null item
    /// or empty list: [7].
    ///
    /// A cursor on a removed entry moves to the entry behind it; of several such cursors only the first opened slot
    /// moves, the others go past the end.
    bool Remove(void* item);
    /// Removes the entry at `index`, 0..count-1, else [3].
    bool Remove(int index);
    /// Removes n times at `index`. Needs 0 <= index < count and 0 <= n <= count, else [3]. When the list ends before
    /// n entries are removed, those before the end are gone and the call fails with [3].
    bool Remove(int index, int n);

    /// Empties the list. Open cursors stay open, past the end.
    bool RemoveAll();

    /// Number of items; -1 on failure.
    int GetCount() const;

    /// The item at `index`, 0..count-1, else null and [3].
    void* Get(int index) const;

    /// Index of an entry that equals `item`, searched from the cached position to the tail and then from the head,
    /// else -1. With duplicates this need not be the first. Null item: -1 and [8].
    int GetIndex(const void* item) const;

    /// Whether an entry equals `item`. Null item: [7].
    bool IsContained(const void* item) const;
    /// Whether every item of `other` is here; true for an empty one. A null among them: [7].
    bool IsContained(const List* other) const;

    /// Opens a cursor on the head and returns its handle, or -1. Ten cursors open: [2].
    long BeginTraversal() const;

    /// The cursor's item; null past the end, without an error.
    void* GetData(long handle) const;

    /// Moves the cursor to the next or previous entry; stepping past the end succeeds. A cursor that is past the end
    /// is put on the head instead, and the call fails with [9].
    bool NextData(long handle) const;
    bool PrevData(long handle) const;

    /// Puts the cursor on the entry at `index`, 0..count-1, else [3].
    bool Move(long handle, int index) const;
    bool MoveFirst(long handle) const;
    bool MoveLast(long handle) const;

    /// Closes the cursor. A handle that is not open here is ignored: a success.
    bool EndTraversal(long handle) const;

private:
    ListImpl* mImpl = nullptr;
};

}  // namespace QxFontEffect
