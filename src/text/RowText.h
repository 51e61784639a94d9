#pragma once

#include <Kobaltrix/KXTypes.h>

#include <string>

class KXFont;

/// What the braces of colour spans mean in a text.
enum class _KXSpans {
    Colored, ///< Spans colour their text.
    Plain    ///< They are text like any other: the text is a file's name or what a user typed.
};

/// @a text as it fits into @a width pixels: whole, or cut between two characters with three dots behind,
/// where a colour span that is cut still ends.
std::string _KXTextThatFits(const KXFont& font, const char* text, float width, _KXSpans spans);

/// @a text as it fits into @a width pixels: whole, or its end behind three dots. Spans are text.
std::string _KXTextEndThatFits(const KXFont& font, const char* text, float width);

/// A text that is shown for many frames and measured once.
class _KXFittedText {
public:
    /// What @a fit, one of the functions above, makes of a text; called again only where something changed.
    template<class Fit>
    const char* of(const KXFont& font, const std::string& text, float width, Fit fit) {
        if (!isFor(font, text, width))
            keep(font, text, width, fit(text.c_str(), width));
        return _shown.c_str();
    }

private:
    bool isFor(const KXFont& font, const std::string& text, float width) const;
    void keep(const KXFont& font, const std::string& text, float width, std::string shown);

    std::string _text, _shown;
    float _width = -1;
    unsigned _fontRevision = 0;
};
