#pragma once

#include <Kobaltrix/KXTextLayout.h>

#include <memory>
#include <new>
#include <string>
#include <utility>

/// A text on a widget, printed or laid out as the theme has it. Laid out it is measured once: a frame in
/// which nothing has changed costs a comparison.
class _KXCaption {
public:
    explicit _KXCaption(std::string text) : _text(std::move(text)) {}
    const char* text() const { return _text.c_str(); }

    /// Pixels that a text is wide in one line, laid out, rounded up.
    static float widthOf(const KXFont& font, const char* text);
    /// The whole pixels that it takes up, laid out and wrapped at a width; 0 wraps nothing. None without
    /// text.
    KXSize sizeOfLines(const KXFont& font, float width) const;

    /// The text laid out in some way. It is laid out anew only where something has changed since it was last.
    const KXTextLayout& layOut(const KXFont& font, const KXTextOptions& options);
    /// The same, wrapped at a width.
    const KXTextLayout& lines(const KXFont& font, float width, KXTextAlign align);

    /// Draws it as one line in a box: printed at @a inset from its top left, or laid out between what
    /// @a inset leaves at both sides, in the middle of the whole height.
    /// @param underlined the index of a character that is seen with a line below it if it is laid out, -1 for
    /// none.
    void drawLine(KXFont* font, KXRect box, KXSize inset, KXColor color, KXTextAlign align,
                  int underlined = -1);
    /// The same for what is laid out in any theme.
    void drawLineLaidOut(const KXFont* font, KXRect box, float inset, KXColor color, KXTextAlign align,
                         int underlined = -1);
    /// Draws it from a corner on: printed as one line, or laid out and wrapped at a width.
    void drawLines(KXFont* font, KXPoint corner, float width, KXColor color, KXTextAlign align);

private:
    std::string _text;
    KXTextLayout _layout;
};

/// Draws a line below a character of a layout's first line.
void _KXUnderline(const KXTextLayout& layout, int index, KXPoint corner, KXColor color);

/// Gives a widget another caption, null for none, and has it fit its size. Where memory lacks for that it
/// keeps the one it had.
template<class Fit>
void _KXChangeCaption(std::unique_ptr<_KXCaption>& caption, std::unique_ptr<_KXCaption> other, Fit fit) {
    std::swap(caption, other);
    try {
        fit();
    } catch (const std::bad_alloc&) { // it was not measured
        std::swap(caption, other);
        throw;
    }
}
