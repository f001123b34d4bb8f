#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/Scratch.h"

namespace QxFontEffect {

class QxString;
struct QxLineInfo;

/// The UTF-16 units of a text, and where its lines stand in them. Made once per render.
class TextUnits {
public:
    /// Test it before use: empty when the string is not constructed or memory ran out.
    explicit TextUnits(const QxString& text);

    explicit operator bool() const { return mUnits != nullptr && static_cast<bool>(mNewlines); }

    const uint16_t* data() const { return mUnits.get(); }
    /// Units with the terminator.
    size_t size() const { return mSize; }

    /// What layout needs to know of one line. Units; the context holds the line and ends with it.
    struct LineRange {
        size_t start;
        size_t count;
        size_t contextStart;
        size_t contextCount;
    };

    /// The range of a line within its paragraph. Lines that reach outside the text are cut to it, lines that end
    /// before they start are empty.
    ///
    /// The paragraph begins with the last newline (LF or CR, itself included) at or before the start of the line, or
    /// with the text; a newline at index 0 is the same as none.
    LineRange rangeOf(const QxLineInfo& line) const;

private:
    std::unique_ptr<const uint16_t[]> mUnits;
    size_t mSize = 0;
    // Indexes of the newlines in increasing order. Looking for them from every line backwards would take quadratic
    // time in a long text without any.
    Scratch<int32_t> mNewlines;
};

}  // namespace QxFontEffect
