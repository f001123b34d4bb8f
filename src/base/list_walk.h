#pragma once

#include "base/Error.h"
#include "base/List.h"

namespace QxFontEffect {

/// Calls `visit(item)` for the items of a list, in order or from the last to the first, until it returns false.
/// Null items are passed on. The list must not change meanwhile.
///
/// Neither the cursor nor its end shows in the error slot: where all cursors of the list are taken, the items are
/// fetched by index, which gives the same items more slowly.
///
/// @return false when `visit` ended the walk.
template <typename Visit>
bool walkList(const List& list, bool backwards, Visit&& visit) {
    const int count = list.GetCount();
    if (count <= 0) return true;

    const int errorBefore = Error::GetError();
    const long cursor = list.BeginTraversal();
    if (cursor == -1) Error::SetError(static_cast<unsigned long>(errorBefore));
    if (cursor != -1 && backwards) list.MoveLast(cursor);

    bool goOn = true;
    // Counted, because an item may be null and stepping past the end would set an error.
    for (int i = 0; goOn && i < count; ++i) {
        if (cursor == -1) {
            goOn = visit(list.Get(backwards ? count - 1 - i : i));
            continue;
        }
        if (i > 0) backwards ? list.PrevData(cursor) : list.NextData(cursor);
        goOn = visit(list.GetData(cursor));
    }
    if (cursor != -1) list.EndTraversal(cursor);
    return goOn;
}

}  // namespace QxFontEffect
