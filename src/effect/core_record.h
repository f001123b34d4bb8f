#pragma once

#include <new>

namespace QxFontEffect {

/// Gives a core a new record of its own in place of `slot`'s. The settings arrive by value and the new record is made
/// first, because they may come out of the record that goes. When memory fails the slot is null, which every pass
/// takes as nothing to draw.
template <typename Record, typename... Settings>
void replaceRecord(Record*& slot, Settings... settings) {
    Record* fresh = new (std::nothrow) Record(settings...);
    delete slot;
    slot = fresh;
}

}  // namespace QxFontEffect
