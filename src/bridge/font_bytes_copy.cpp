#include "bridge/font_bytes_copy.h"

#include <cstring>
#include <new>

#include "bridge/scoped_refs.h"

namespace QxFontEffect {

FontBytesCopy copyFontBytes(JNIEnv* env, jbyteArray data) {
    FontBytesCopy copy;
    const Elements<jbyteArray> elements(env, data);
    if (elements.data() == nullptr) return copy;
    copy.size = static_cast<unsigned int>(env->GetArrayLength(data));
    // One byte at least: an array without any is a font of size 0, not a lack of memory.
    copy.bytes.reset(new (std::nothrow) char[copy.size + 1]);
    if (copy.bytes != nullptr && copy.size > 0) std::memcpy(copy.bytes.get(), elements.data(), copy.size);
    return copy;
}

}  // namespace QxFontEffect
