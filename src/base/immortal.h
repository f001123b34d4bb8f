#pragma once

#include <new>

namespace QxFontEffect {

/// An object of static storage that is never destroyed.
///
/// Other static objects, and threads that outlive `main`, still call into the library while the process ends; what
/// they reach has to be there. Meant for `static Immortal<T> name;` inside a function.
template <typename T>
union Immortal {
    Immortal() { new (&value) T(); }
    ~Immortal() {}

    T value;
};

}  // namespace QxFontEffect
