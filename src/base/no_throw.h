#pragma once

#include <exception>

namespace QxFontEffect {

/// Runs `body()`; false when it ran out of memory on the way.
///
/// Nothing in the library throws, but containers and the platform's text stack may. The body has to leave its objects
/// whole wherever it is left. Builds without exceptions end inside the allocation instead, as the platform does.
template <typename Body>
bool withoutThrowing(Body&& body) {
#if defined(__cpp_exceptions)
    try {
        body();
    } catch (const std::exception&) {
        return false;
    }
#else
    body();
#endif
    return true;
}

}  // namespace QxFontEffect
