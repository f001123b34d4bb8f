#pragma once

#include <jni.h>

#include "bridge/java_calls.h"

namespace QxFontEffect {

/// The colour behind a text.
struct BackgroundColor {
    jint color = 0;  ///< 0xAARRGGBB
    bool enabled = false;
};

/// The colour of the last android.text.style.BackgroundColorSpan of a character sequence; one colour serves the whole
/// text. Disabled without such a span and where the platform has no such classes.
/// @param length  of the text, in UTF-16 units.
BackgroundColor readBackgroundColor(JavaCalls& java, jobject characters, jint length);

}  // namespace QxFontEffect
