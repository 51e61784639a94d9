#include "ui/Description.h"

#include "text/ColorEscapes.h"

std::string _KXSpokenText(const char* text) {
    std::string visible = text;
    _KXVisibleText(visible.data(), visible.size() + 1, text);
    visible.resize(visible.find('\0') == std::string::npos ? visible.size() : visible.find('\0'));
    return visible;
}

void _KXAddState(KXUIDescription& said, const char* word) {
    if (!said.state.empty())
        said.state += ", ";
    said.state += word;
}
