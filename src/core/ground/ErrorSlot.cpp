#include "core/ground/ErrorSlot.h"

#include <Kobaltrix/KXError.h>

#include <cstdarg>
#include <cstdio>

// A fixed buffer rather than a heap block: failures before KXInit and after KXDeInit have a place to go. One
// for each thread: a game may load images beside its frames.
static constinit thread_local char _KXError[_KXErrorSize] = "";

const char* KXError() { return _KXError; }

void _KXClearError() { _KXError[0] = 0; }

void _KXSetError(const char* format, ...) {
    if (!format)
        return _KXClearError();
    va_list arguments;
    va_start(arguments, format);
    if (std::vsnprintf(_KXError, sizeof _KXError, format, arguments) < 0)
        _KXClearError();
    va_end(arguments);
}

void _KXReportError(const char* format, ...) {
    char message[1024];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    if (length < 0)
        message[0] = 0;
    _KXFormatWithoutArguments(_KXError, sizeof _KXError, message);
}

void _KXFormatWithoutArguments(char* out, std::size_t size, const char* format) {
    if (size == 0)
        return;
    std::size_t length = 0;
    for (; *format && length + 1 < size; ++format) {
        out[length++] = *format;
        if (format[0] == '%' && format[1] == '%')
            ++format;
    }
    out[length] = 0;
}
