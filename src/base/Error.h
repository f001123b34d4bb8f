#pragma once

namespace QxFontEffect {

/// The last-error slot: one code per thread, initially 0. A successful call never clears it.
///
/// | Code | Meaning |
/// |---|---|
/// | 1 | a system call failed |
/// | 2 | no free traversal cursor |
/// | 3 | index or range out of bounds |
/// | 4 | already constructed |
/// | 7 | invalid argument |
/// | 8 | object not constructed |
/// | 9 | unknown handle or object, or a cursor past the end |
/// | 11 | a file could not be opened |
/// | 19 | no text object is bound to the Java instance |
class Error {
public:
    /// Stores `code`, narrowed to 32 bits, in the calling thread's slot.
    static void SetError(unsigned long code);

    /// The calling thread's last code.
    static int GetError();
};

}  // namespace QxFontEffect
