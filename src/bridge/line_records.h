#pragma once

#include "base/List.h"
#include "text/QxLineInfo.h"

namespace QxFontEffect {

class QxTextObject;

/// Line records on their way to a text object; those that are not handed over are deleted.
class LineRecords {
public:
    LineRecords() = default;
    LineRecords(const LineRecords&) = delete;
    LineRecords& operator=(const LineRecords&) = delete;
    ~LineRecords();

    /// False when memory has run out.
    bool construct() { return mList.Construct(); }
    bool add(const QxLineInfo& line);

    /// Replaces the lines of the object by these. False when memory has run out; the object then has the first ones.
    bool handOver(QxTextObject* text);

private:
    List mList;
};

}  // namespace QxFontEffect
