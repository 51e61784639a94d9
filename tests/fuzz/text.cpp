// Any text, measured, printed with its colour spans, and laid out.

#include "Fuzz.h"
#include "core/ground/ErrorSlot.h"
#include "text/ColorEscapes.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXTextLayout.h>
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

static void layOut(const KXFont& font, const std::string& text) {
    KXTextOptions options;
    options.width = static_cast<float>(text.size() % 97);
    options.maxLines = static_cast<int>(text.size() % 5);
    options.align = KXTextAlign(text.size() % 5);
    const KXTextLayout layout(font, text.c_str(), options);
    const int length = static_cast<int>(std::strlen(layout.text()));
    for (int i = 0; i < layout.lineCount(); ++i) {
        const KXTextLine line = layout.line(i);
        require(0 <= line.begin && line.begin <= line.end && line.end <= length, "a line is of the text");
        const KXTextHit hit = layout.hit({10, line.rect.origin.y});
        require(line.begin <= hit.caret && hit.caret <= line.end, "what is hit is of the line");
        layout.caret(hit.caret);
    }
    layout.selection(1, length, nullptr, 0);
    layout.draw({2, 2}, {1, 1, 1, 1});
}

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    static KXFont font("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", KXAliasModeTexture);
    const std::string text = bytes.rest().c_str();
    readSpans(text);
    font.setSize(14);
    require(font.advance(text.c_str()) >= 0, "a text has a width");
    font.print({3, 20}, {1, 1, 1, 1}, "%s", text.c_str());
    layOut(font, text);
    _KXReportError("%s", text.c_str()); // which takes it as a format once more
    KXError();
}
