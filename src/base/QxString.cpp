#include "base/QxString.h"

#include <algorithm>
#include <climits>
#include <cwchar>
#include <new>
#include <utility>

#include "base/platform_log.h"
#include "base/utf16.h"
#include "base/utf8.h"
#include "base/wide_text.h"

namespace QxFontEffect {

struct QxStringImpl {
    WideText content;
};

// The last argument of failWith names the place of a failure in the log; it does not follow the source lines.

namespace {

constexpr char kTag[] = "QxString";

bool outOfMemory() {
    return failWith(kTag, 1, 31);
}

/// failWith for results where -1 means failure.
int noNumber(long code, int line) {
    failWith(kTag, code, line);
    return -1;
}

int noNumberForMemory() {
    return noNumber(1, 43);
}

int clampedToInt(long long size) {
    return size > INT_MAX ? INT_MAX : static_cast<int>(size);
}

}  // namespace

QxString::~QxString() {
    delete mImpl;
}

bool QxString::isUsable(const QxString* argument, int line) {
    if (argument != nullptr && argument->mImpl != nullptr) return true;
    if (argument != nullptr) failWith(kTag, 8, 102);
    return failWith(kTag, 7, line);
}

bool QxString::create(WideText&& content) {
    if (content.text == nullptr) return outOfMemory();
    mImpl = new (std::nothrow) QxStringImpl{std::move(content)};
    return mImpl != nullptr || outOfMemory();
}

bool QxString::replace(WideText&& content) {
    if (content.text == nullptr) return outOfMemory();
    mImpl->content = std::move(content);
    return true;
}

bool QxString::Construct() {
    if (mImpl != nullptr) return failWith(kTag, 4, 121);
    mImpl = new (std::nothrow) QxStringImpl();
    return mImpl != nullptr || outOfMemory();
}

bool QxString::Construct(const wchar_t* text) {
    if (mImpl != nullptr) return failWith(kTag, 4, 128);
    if (text == nullptr) return failWith(kTag, 7, 129);
    return create(copied(text));
}

bool QxString::Construct(const char* text) {
    if (mImpl != nullptr) return failWith(kTag, 4, 135);
    if (text == nullptr) return failWith(kTag, 7, 136);
    return create(copied(text));
}

bool QxString::Construct(const QxString* other) {
    if (mImpl != nullptr) return failWith(kTag, 4, 142);
    if (!isUsable(other, 143)) return false;
    if (other->mImpl->content.text == nullptr) return Construct();
    return create(copied(other->mImpl->content.characters(), other->mImpl->content.length));
}

bool QxString::Construct(const QxString* other, int count) {
    if (mImpl != nullptr) return failWith(kTag, 4, 150);
    if (!isUsable(other, 151)) return false;
    return Construct(other->mImpl->content.characters(), count);
}

bool QxString::Construct(const wchar_t* text, int count) {
    if (mImpl != nullptr) return failWith(kTag, 4, 157);
    if (text == nullptr || count < 0) return failWith(kTag, 7, 158);
    return create(copied(text, lengthUpTo(text, count)));
}

bool QxString::Set(const QxString* other) {
    if (mImpl == nullptr) return failWith(kTag, 8, 164);
    if (other == nullptr) return Clear();
    if (!isUsable(other, 166)) return false;
    if (other->mImpl->content.text == nullptr) return Clear();
    return replace(copied(other->mImpl->content.characters(), other->mImpl->content.length));
}

bool QxString::Set(const wchar_t* text) {
    if (mImpl == nullptr) return failWith(kTag, 8, 173);
    return text == nullptr ? Clear() : replace(copied(text));
}

bool QxString::Set(const char* text) {
    if (mImpl == nullptr) return failWith(kTag, 8, 178);
    return text == nullptr ? Clear() : replace(copied(text));
}

bool QxString::Clear() {
    if (mImpl == nullptr) return failWith(kTag, 8, 183);
    mImpl->content = WideText();
    return true;
}

bool QxString::insert(const wchar_t* text, int64_t length, int index) {
    if (mImpl->content.length + length > INT_MAX) return failWith(kTag, 7, 189);
    const wchar_t* old = mImpl->content.characters();
    return replace(joined(old, index, text, length, old + index, mImpl->content.length - index));
}

bool QxString::Append(const QxString* other) {
    if (mImpl == nullptr) return failWith(kTag, 8, 195);
    if (other == nullptr) return true;
    if (!isUsable(other, 197)) return false;
    return insert(other->mImpl->content.characters(), other->mImpl->content.length, mImpl->content.length);
}

bool QxString::Append(const wchar_t* text) {
    if (mImpl == nullptr) return failWith(kTag, 8, 202);
    if (text == nullptr) return true;
    return insert(text, static_cast<int64_t>(std::wcslen(text)), mImpl->content.length);
}

bool QxString::Append(const char* text) {
    if (mImpl == nullptr) return failWith(kTag, 8, 208);
    if (text == nullptr) return true;
    const WideText converted = copied(text);
    if (converted.text == nullptr) return outOfMemory();
    return insert(converted.characters(), converted.length, mImpl->content.length);
}

bool QxString::Insert(const wchar_t* text, int index) {
    if (mImpl == nullptr) return failWith(kTag, 8, 216);
    if (text == nullptr) return true;
    if (index < 0 || index > mImpl->content.length) return failWith(kTag, 3, 218);
    if (*text == L'\0') return failWith(kTag, 7, 219);
    return insert(text, static_cast<int64_t>(std::wcslen(text)), index);
}

bool QxString::Insert(const QxString* other, int index) {
    if (mImpl == nullptr) return failWith(kTag, 8, 224);
    if (other == nullptr) return true;
    if (!isUsable(other, 226)) return false;
    return Insert(other->mImpl->content.characters(), index);
}

bool QxString::Remove(int start, int count) {
    if (mImpl == nullptr) return failWith(kTag, 8, 231);
    if (start < 0 || start >= mImpl->content.length) return failWith(kTag, 3, 232);
    if (count < 0 || count > mImpl->content.length - start) return failWith(kTag, 7, 233);
    const wchar_t* old = mImpl->content.characters();
    const int behind = start + count;
    return replace(joined(old, start, L"", 0, old + behind, mImpl->content.length - behind));
}

bool QxString::SetSubstring(const QxString* source, int start, int end) {
    if (mImpl == nullptr) return failWith(kTag, 8, 240);
    if (!isUsable(source, 241)) return false;
    const WideText& from = source->mImpl->content;
    const int64_t count = static_cast<int64_t>(end) - start + 1;
    if (from.text == nullptr || start < 0 || count < 0) return failWith(kTag, 7, 244);
    const int first = std::min(start, from.length);
    return replace(copied(from.characters() + first, std::min<int64_t>(count, from.length - first)));
}

int QxString::GetLength() const {
    if (mImpl == nullptr) return noNumber(8, 251);
    return mImpl->content.length;
}

const wchar_t* QxString::GetPointer() const {
    if (mImpl != nullptr) return mImpl->content.text.get();
    failWith(kTag, 8, 256);
    return nullptr;
}

wchar_t* QxString::GetPointer() {
    return const_cast<wchar_t*>(static_cast<const QxString*>(this)->GetPointer());
}

bool QxString::GetChar(int index, wchar_t* out) const {
    if (mImpl == nullptr) return failWith(kTag, 8, 263);
    if (out == nullptr) return failWith(kTag, 7, 264);
    if (index < 0 || index >= mImpl->content.length) return failWith(kTag, 3, 265);
    *out = mImpl->content.characters()[index];
    return true;
}

int QxString::GetUTF8Size() const {
    if (mImpl == nullptr) return noNumber(8, 271);
    return clampedToInt(encodedUtf8Size(mImpl->content.characters()) + 1);
}

bool QxString::GetUTF8(char* dst, int size) const {
    if (mImpl == nullptr) return failWith(kTag, 8, 276);
    if (dst == nullptr || size < 0) return failWith(kTag, 7, 277);
    if (size == 0) return true;
    encodeUtf8(mImpl->content.characters(), dst, static_cast<size_t>(size));
    dst[size - 1] = '\0';
    return true;
}

int QxString::GetUTF16Size() const {
    if (mImpl == nullptr) return noNumber(8, 285);
    return clampedToInt(static_cast<long long>(encodeUtf16(mImpl->content.characters(), nullptr)) + 1);
}

uint16_t* QxString::GetUTF16() const {
    if (mImpl == nullptr) {
        failWith(kTag, 8, 290);
        return nullptr;
    }
    const size_t units = encodeUtf16(mImpl->content.characters(), nullptr);
    uint16_t* made = new (std::nothrow) uint16_t[units + 1];
    if (made == nullptr)
        outOfMemory();
    else
        encodeUtf16(mImpl->content.characters(), made);
    return made;
}

int QxString::CompareTo(const QxString* other) const {
    if (mImpl == nullptr) return noNumber(8, 299);
    if (!isUsable(other, 300)) return -1;
    return compared(mImpl->content, other->mImpl->content);
}

int QxString::CompareTo(const char* text) const {
    if (mImpl == nullptr) return noNumber(8, 305);
    if (text == nullptr) return noNumber(7, 306);
    const WideText converted = copied(text);
    if (converted.text == nullptr) return noNumberForMemory();
    return compared(mImpl->content, converted);
}

int QxString::CompareTo(const char* text, int count) const {
    if (mImpl == nullptr) return noNumber(8, 313);
    if (text == nullptr || count < 0) return noNumber(7, 314);
    const WideText converted = copied(text);
    if (converted.text == nullptr) return noNumberForMemory();
    return comparedUpTo(count, mImpl->content, converted);
}

int QxString::Find(const wchar_t* pattern) const {
    if (mImpl == nullptr) return noNumber(8, 321);
    if (pattern == nullptr) return noNumber(7, 322);
    return firstIn(mImpl->content, pattern);
}

int QxString::Find(const char* pattern) const {
    if (mImpl == nullptr) return noNumber(8, 327);
    if (pattern == nullptr) return noNumber(7, 328);
    const WideText converted = copied(pattern);
    return converted.text == nullptr ? noNumberForMemory() : firstIn(mImpl->content, converted.characters());
}

int QxString::ReverseFind(const wchar_t* pattern) const {
    if (mImpl == nullptr) return noNumber(8, 334);
    if (pattern == nullptr) return noNumber(7, 335);
    return lastIn(mImpl->content, pattern);
}

int QxString::ReverseFind(const char* pattern) const {
    if (mImpl == nullptr) return noNumber(8, 340);
    if (pattern == nullptr) return noNumber(7, 341);
    const WideText converted = copied(pattern);
    return converted.text == nullptr ? noNumberForMemory() : lastIn(mImpl->content, converted.characters());
}

}  // namespace QxFontEffect
