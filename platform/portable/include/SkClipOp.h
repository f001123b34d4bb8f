#pragma once

/// The portable canvas keeps one rectangle as its clip, so it can only be narrowed.
enum class SkClipOp {
    kIntersect = 1,
};
