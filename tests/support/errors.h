#pragma once

#include <gtest/gtest.h>

#include <initializer_list>

#include "base/Error.h"

namespace QxFontEffect::test {

/// Whether all of these failed, the last one with this code; the slot is clean afterwards.
inline ::testing::AssertionResult failsWith(int code, std::initializer_list<bool> failures) {
    const int got = Error::GetError();
    Error::SetError(0);
    for (const bool failed : failures)
        if (!failed) return ::testing::AssertionFailure() << "did not fail";
    if (got != code) return ::testing::AssertionFailure() << "error " << got;
    return ::testing::AssertionSuccess();
}

}  // namespace QxFontEffect::test
