#pragma once

/// Stored with a paint; the portable canvas never scales a picture.
enum SkFilterQuality {
    kNone_SkFilterQuality = 0,
    kLow_SkFilterQuality = 1,
    kMedium_SkFilterQuality = 2,
    kHigh_SkFilterQuality = 3,
};
