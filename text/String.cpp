#include <krcore/text/String.h>

#include "foundation/AtomicCount.h"
#include "foundation/HeapBlocks.h"
#include "foundation/ModuleHooks.h"
#include "text/StringBuffer.h"
#include "text/Units.h"

#include <algorithm>

namespace KrCore {

// Exported, for callers on Windows that take its address.
constexpr int String::maxLength;

// Its count says that it is shared, so that nobody writes to it.
constinit String::EmptyBuffer String::empty_ = {{0, 0, 2}, 0};

// ---- Buffers ----

int StringBuffer::checkedLength(std::int64_t length) {
    if (length > String::maxLength) throw OutOfMemory();
    return static_cast<int>(length);
}

StringBuffer::Buffer* StringBuffer::allocate(int length) {
    const std::uint32_t capacity = capacityFor(checkedLength(length));
    auto* buffer = static_cast<Buffer*>(Heap::operator new(byteCount(capacity)));
    *buffer = {length, capacity - 1, 1};
    buffer->units()[length] = 0;
    return buffer;
}

StringBuffer::Buffer* StringBuffer::copyOf(const Buffer* buffer) {
    Buffer* copy = allocate(buffer->length);
    copyUnits(copy->units(), buffer->units(), buffer->length);
    return copy;
}

StringBuffer::Buffer* StringBuffer::share(Buffer* buffer) {
    if (buffer == empty()) return buffer;
    if (isUnshareable(buffer)) return copyOf(buffer);
    countUp(buffer->refCount);
    return buffer;
}

void StringBuffer::release(Buffer* buffer) noexcept {
    if (buffer != empty() && countDown(buffer->refCount) == 0) Heap::operator delete(buffer);
}

StringBuffer::Buffer* StringBuffer::resize(Buffer* buffer, int length) {
    const std::uint32_t mark = buffer->capacityWord & unshareable;
    const std::uint32_t capacity = capacityFor(checkedLength(length));
    auto* resized = static_cast<Buffer*>(growBlock(buffer, byteCount(capacity)));
    *resized = {length, (capacity - 1) | mark, 1};
    resized->units()[length] = 0;
    return resized;
}

StringBuffer::Buffer* StringBuffer::shrink(Buffer* buffer, int length) noexcept {
    if (capacityFor(length) == capacity(buffer)) return buffer;
    try {
        return resize(buffer, length);
    } catch (const OutOfMemory&) {
        return buffer;
    }
}

void StringBuffer::replaceContents(String& text, String&& contents) noexcept {
    if (isUnshareable(text.buffer_) && !contents.isEmpty()) {
        contents.buffer_->capacityWord |= unshareable;
    }
    std::swap(text.buffer_, contents.buffer_);
}

// ---- Construction and assignment ----

String::String(const String& other) : Heap(), buffer_(StringBuffer::share(other.buffer_)) {}

String::String(const char* text) : String() { append(text); }

String::String(const char* text, const Encoder* encoder) : String() { decode(text, -1, encoder); }

String::String(const unsigned short* text, int length) : String() { append(text, length); }

String::String(const unsigned int* text, int length) : String() {
    if (!text) return;
    // Units only ever become more, so what is too long already needs no look.
    const int count = StringBuffer::checkedLength(length < 0 ? countUtf32(text) : length);
    init(StringBuffer::checkedLength(utf16Length(text, count)));
    encodeUtf16(buffer_->units(), text, count);
}

String::~String() { StringBuffer::release(buffer_); }

String& String::operator=(const String& other) {
    if (buffer_ == other.buffer_) return *this;
    Buffer* taken = StringBuffer::share(other.buffer_);
    StringBuffer::release(buffer_);
    buffer_ = taken;
    return *this;
}

String& String::operator=(String&& other) noexcept {
    std::swap(buffer_, other.buffer_);
    return *this;
}

String& String::operator=(char ch) { return *this = widened(ch); }

String& String::operator=(unsigned short ch) {
    setup(ch, 1);
    return *this;
}

// The text may lie in this string's own buffer, so the new string is complete before the old one
// goes.
String& String::operator=(const char* text) { return *this = String(text); }

String& String::operator=(const unsigned short* text) { return *this = String(text); }

String& String::operator=(const unsigned int* text) { return *this = String(text); }

// ---- Access ----

unsigned short* String::writable() {
    unique();
    return buffer_->units();
}

void String::set(int index, unsigned short ch) {
    if (index < 0 || index >= length()) return;
    writable()[index] = ch;
}

// ---- Size ----

void String::init(int length) {
    if (length <= 0) return erase();
    Buffer* fresh = StringBuffer::allocate(length);
    StringBuffer::release(buffer_);
    buffer_ = fresh;
}

void String::adjust(int length) {
    if (length <= 0) return erase();
    if (buffer_->isShared()) {
        Buffer* fresh = StringBuffer::allocate(length);
        copyUnits(fresh->units(), buffer_->units(), std::min(length, buffer_->length));
        StringBuffer::release(buffer_);
        buffer_ = fresh;
        return;
    }
    const std::uint32_t capacity = StringBuffer::capacity(buffer_);
    const auto needed = static_cast<std::uint32_t>(length) + 1;
    if (needed > capacity) {
        buffer_ = StringBuffer::resize(buffer_, length);
        return;
    }
    if (capacity - needed > StringBuffer::keptSlack) {
        buffer_ = StringBuffer::shrink(buffer_, length);
    }
    buffer_->length = length;
    buffer_->units()[length] = 0;
}

void String::setup(unsigned short ch, int count) {
    init(count);
    std::fill_n(buffer_->units(), length(), ch);
}

void String::clear() { erase(); }

void String::erase() {
    StringBuffer::release(buffer_);
    buffer_ = StringBuffer::empty();
}

void String::unique() {
    if (!buffer_->isShared()) return;
    Buffer* copy = StringBuffer::copyOf(buffer_);
    StringBuffer::release(buffer_);
    buffer_ = copy;
}

void String::makeUnique() {
    unique();
    buffer_->capacityWord |= StringBuffer::unshareable;
}

// ---- The shared empty string ----

namespace {

constinit String* sharedEmptyString = nullptr;

} // namespace

const String& String::emptyString() { return *sharedEmptyString; }

void startStrings() { sharedEmptyString = new String; }

void stopStrings() {
    delete sharedEmptyString;
    sharedEmptyString = nullptr;
}

} // namespace KrCore
