#pragma once

/// The modes that the portable canvas knows; names and numbers are the platform's.
enum class SkBlendMode {
    kClear = 0,
    kSrc = 1,
    kSrcOver = 3,
};
