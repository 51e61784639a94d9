#include <Kobaltrix/KXClipboard.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/HeapGlobal.h"
#include "core/ground/Tape.h"

#include <SDL_clipboard.h>
#include <SDL_error.h>
#include <SDL_stdinc.h>

#include <memory>
#include <string>

// Some systems end lines on the clipboard with a return and a newline, whatever was put there.
static std::string withPlainLines(const std::string& text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text.compare(i, 2, "\r\n") != 0)
            plain += text[i];
    return plain;
}

const char* KXClipboardText() {
    static constinit _KXHeapGlobal<std::string> last;
    const std::unique_ptr<char, decltype(&SDL_free)> text(SDL_GetClipboardText(), SDL_free);
    last.get() = withPlainLines(_KXTextAnswer(text.get()));
    return last.get().c_str();
}

int KXSetClipboardText(const char* text) {
    if (SDL_SetClipboardText(text ? text : "") == 0)
        return -1;
    _KXReportError("The clipboard refuses the text: %s", SDL_GetError());
    return 0;
}
