#include "util/KXString.h"

#include "core/ground/Truncate.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {
// The head of a temporary string's block; the text handed out follows it in the same allocation.
struct TemporaryString {
    TemporaryString* next;
};

// The pool, oldest string first. It has no destructor, so a static object of the game that makes a temporary
// string while the process ends still finds it alive.
struct TemporaryStringList {
    TemporaryString* first;
    TemporaryString* last;
};
} // namespace

static constinit TemporaryStringList _sKXTemporaryStrings = {nullptr, nullptr};

char* KXTempString(const char* format, ...) {
    if (!format)
        return nullptr;
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length < 0)
        text[0] = 0;

    return _KXKeepTemporarily(text);
}

char* _KXKeepTemporarily(std::string_view text) {
    void* block = std::malloc(sizeof(TemporaryString) + text.size() + 1);
    if (!block)
        return nullptr;
    auto* string = static_cast<TemporaryString*>(block);
    string->next = nullptr;
    char* copy = static_cast<char*>(block) + sizeof(TemporaryString);
    copy[text.copy(copy, text.size())] = 0;

    TemporaryString*& link =
        _sKXTemporaryStrings.last ? _sKXTemporaryStrings.last->next : _sKXTemporaryStrings.first;
    link = string;
    _sKXTemporaryStrings.last = string;
    return copy;
}

void _KXCleanTempStrings() {
    while (TemporaryString* oldest = _sKXTemporaryStrings.first) {
        _sKXTemporaryStrings.first = oldest->next;
        std::free(oldest);
    }
    _sKXTemporaryStrings.last = nullptr;
}

char* _KXMakeString(int size) {
    if (size < 1)
        return nullptr;
    char* string = static_cast<char*>(std::malloc(static_cast<std::size_t>(size)));
    if (string)
        string[0] = 0;
    return string;
}

char* _KXCopyForCaller(std::string_view text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy)
        throw std::bad_alloc();
    copy[text.copy(copy, text.size())] = 0;
    return copy;
}

std::string_view _KXTextIn(const char* bytes, std::size_t size) {
    const void* end = std::memchr(bytes, 0, size);
    return {bytes, end ? static_cast<std::size_t>(static_cast<const char*>(end) - bytes) : size};
}

const char* KXPointToString(KXPoint point) { return KXTempString("(%f, %f)", point.x, point.y); }

const char* KXPointToStringi(KXPoint point) {
    return KXTempString("(%d, %d)", _KXTruncate(point.x), _KXTruncate(point.y));
}

const char* KXSizeToString(KXSize size) { return KXTempString("(%f, %f)", size.width, size.height); }

const char* KXSizeToStringi(KXSize size) {
    return KXTempString("(%d, %d)", _KXTruncate(size.width), _KXTruncate(size.height));
}

const char* KXRectToString(KXRect rect) {
    return KXTempString("{ (%f, %f) : (%f, %f) }", rect.origin.x, rect.origin.y, rect.size.width,
                        rect.size.height);
}

const char* KXRectToStringi(KXRect rect) {
    return KXTempString("{ (%d, %d) : (%d, %d) }", _KXTruncate(rect.origin.x), _KXTruncate(rect.origin.y),
                        _KXTruncate(rect.size.width), _KXTruncate(rect.size.height));
}

const char* KXVector3DToString(KXVector3D vector) {
    return KXTempString("(%f, %f, %f)", vector.x, vector.y, vector.z);
}

const char* KXDirectionToString(KXDirection direction) {
    static constexpr const char* names[] = {"None",      "Left",       "Up",      "Down",    "Right",
                                            "Down Left", "Down Right", "Up Left", "Up Right"};
    const int value = direction;
    return KXTempString("%s", value >= -1 && value <= 7 ? names[value + 1] : "Unknown");
}

void KXDisableTemporaryStringCleanup() { ++_KXTemporaryStringCleanupDisabledCount; }

void KXEnableTemporaryStringCleanup() {
    if (_KXTemporaryStringCleanupDisabledCount > 0)
        --_KXTemporaryStringCleanupDisabledCount;
}
