// Any text, measured and printed with its colour spans.

#include "Fuzz.h"
#include "core/ground/ErrorSlot.h"
#include "text/ColorEscapes.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXWindow.h>

static void readSpans(const std::string& text) {
    const char* at = text.c_str();
    _KXColorSpan span;
    std::size_t spans = 0;
    while (_KXNextColorSpan(at, span)) {
        require(at <= text.c_str() + text.size(), "a span ends within the text");
        require(span.color.r == span.color.r && ++spans <= text.size(), "each span is one, with a colour");
    }
    char visible[64];
    _KXVisibleText(visible, sizeof visible, text.c_str());
    require(std::strlen(visible) < sizeof visible, "what is visible fits");
}

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    static KXFont font("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", KXAliasModeTexture);
    const std::string text = bytes.rest().c_str();
    readSpans(text);
    font.setSize(14);
    require(font.advance(text.c_str()) >= 0, "a text has a width");
    font.print({3, 20}, {1, 1, 1, 1}, "%s", text.c_str());
    _KXReportError("%s", text.c_str()); // which takes it as a format once more
    KXError();
}
