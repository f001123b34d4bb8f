#include "bridge/java_text.h"

#include <cstring>

#include "base/utf8.h"
#include "bridge/scoped_refs.h"

namespace QxFontEffect {

bool readWideText(JNIEnv* env, jstring string, std::vector<wchar_t>* out) {
    const UtfChars chars(env, string);
    if (chars.get() == nullptr) return false;
    out->resize(std::strlen(chars.get()) + 1);
    out->resize(decodeModifiedUtf8(chars.get(), out->data()) + 1);
    return true;
}

bool readUtf8(JNIEnv* env, jstring string, std::string* out) {
    std::vector<wchar_t> wide;
    if (!readWideText(env, string, &wide)) return false;
    // Decoded text holds no negative characters, so the size counts every byte.
    std::vector<char> bytes(static_cast<size_t>(encodedUtf8Size(wide.data())) + 1);
    out->assign(bytes.data(), encodeUtf8(wide.data(), bytes.data(), bytes.size()));
    return true;
}

}  // namespace QxFontEffect
