#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace QxFontEffect {

// A VM hands its strings out in a modified UTF-8 of its own. Nothing behind the bridge knows that form: names and
// paths become ordinary UTF-8 here, and texts wide characters.

/// Converts a name, path or tag list to ordinary UTF-8. False for a null string and when the VM has no memory, which
/// is not left pending; `out` is then untouched.
bool readUtf8(JNIEnv* env, jstring string, std::string* out);

/// Converts a text to NUL-terminated wide characters, one per code point; lone surrogates stay. False as above.
bool readWideText(JNIEnv* env, jstring string, std::vector<wchar_t>* out);

}  // namespace QxFontEffect
