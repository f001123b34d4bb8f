#pragma once

#include <jni.h>

namespace QxFontEffect {

class List;

/// Log tag of the font natives.
constexpr char kFontTag[] = "Init_QxFontManager_JNI";

/// Converts the families of an android.text.FontConfig to QxFontFamily records and appends them to `out`, whose owner
/// owns them, on failure too.
///
/// Only the first family with a name is taken: it is the default one. Fonts that cannot be read, italic fonts and
/// fonts that serve as a fallback for one family only are left out, and families without fonts with them. The default
/// family, symbols and whatever names no language are loaded at once, the others when a text asks for their language.
///
/// False for null, when a method is missing, when a getter throws (its exception stays pending) and when memory runs
/// out.
bool ConvertToFontFamilies(JNIEnv* env, jobject fontConfig, List* out);

}  // namespace QxFontEffect
