#include "bridge/line_records.h"

#include <memory>
#include <new>

#include "base/list_walk.h"
#include "text/QxTextObject.h"

namespace QxFontEffect {

LineRecords::~LineRecords() {
    walkList(mList, false, [](void* record) {
        delete static_cast<QxLineInfo*>(record);
        return true;
    });
}

bool LineRecords::add(const QxLineInfo& line) {
    std::unique_ptr<QxLineInfo> record(new (std::nothrow) QxLineInfo(line));
    if (record == nullptr || !mList.Add(static_cast<void*>(record.get()))) return false;
    static_cast<void>(record.release());  // the list has it now
    return true;
}

bool LineRecords::handOver(QxTextObject* text) {
    if (text->SetLineInfo(&mList)) {
        mList.RemoveAll();
        return true;
    }
    // Those that were appended before memory ran out are the object's.
    const List* const lines = text->GetLineInfo();
    const int taken = lines == nullptr ? 0 : lines->GetCount();
    if (taken > 0) mList.Remove(0, taken);
    return false;
}

}  // namespace QxFontEffect
