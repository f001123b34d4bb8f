#pragma once

#include <memory>
#include <string>

#include <hwui/Paint.h>
#include <hwui/Typeface.h>

namespace qxbench {

/// Hands the library Roboto as its only system family, found through fontconfig. Throws std::runtime_error when it is
/// not installed. Once a process.
void setUpFonts();

/// The typeface that text objects draw with. After setUpFonts.
const android::Typeface& benchTypeface();

/// A black antialiased paint of `size` pixels.
android::Paint benchPaint(float size);

}  // namespace qxbench
