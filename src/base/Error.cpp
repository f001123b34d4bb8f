#include "base/Error.h"

#include <cstdint>

namespace QxFontEffect {

namespace {
thread_local int32_t lastError = 0;
}

void Error::SetError(unsigned long code) {
    lastError = static_cast<int32_t>(static_cast<uint32_t>(code));
}

int Error::GetError() {
    return lastError;
}

}  // namespace QxFontEffect
