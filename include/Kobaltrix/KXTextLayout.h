#pragma once

#include <Kobaltrix/KXFont.h>

#include <memory>

/// @file
/// Text laid out in a box: wrapped at words, aligned, cut with an ellipsis, measured once and drawn often.
///
/// @code
/// KXTextOptions options;
/// options.width = 240;
/// options.align = KXTextAlignJustified;
/// const KXTextLayout story(font, "It was a dark night, {C1,0.8,0.5,1}and the owl was awake{EC}.", options);
/// story.draw({20, 20}, white); // in every frame
/// @endcode
///
/// Text is UTF-8 of any script: it is shaped, so that letters join and marks sit where they belong, and runs
/// from right to left where its script does. A line feed begins a line, a tab goes to the next stop. Colour
/// spans are those of KXFont.h and run over lines. Lengths are in units of the target; positions and
/// rectangles are from the top left of the box. An index is an offset in bytes into KXTextLayout::text().
///
/// Laying out needs no window. Drawing does, and the thread that owns its OpenGL context.

/// Where lines stand in the width of their box.
enum KXTextAlign : int {
    KXTextAlignStart = 0,    ///< Left, and right in paragraphs that run from right to left.
    KXTextAlignLeft = 1,     ///< At the left edge.
    KXTextAlignCentre = 2,   ///< In the middle.
    KXTextAlignRight = 3,    ///< At the right edge.
    KXTextAlignJustified = 4 ///< From edge to edge by wider blanks; a paragraph's last line as with start.
};

/// Where the text stands in the height of its box.
enum KXTextVerticalAlign : int {
    KXTextTop = 0,    ///< The first line at the top.
    KXTextMiddle = 1, ///< As much above the first line's capitals as below the last line's baseline.
    KXTextBottom = 2  ///< The last line at the bottom.
};

/// Which way paragraphs run.
enum KXTextDirection : int {
    KXTextDirectionAuto = 0,        ///< As the first letter of each does.
    KXTextDirectionLeftToRight = 1, ///< Whatever their letters.
    KXTextDirectionRightToLeft = 2  ///< Whatever their letters.
};

/// How a text is laid out, and what it is drawn with. Numbers that make no sense count as their defaults.
struct KXTextOptions {
    float width = 0;  ///< Of the box. Lines are wrapped to it, words that are wider within; 0 does not wrap.
    float height = 0; ///< Of the box, for the vertical alignment alone; 0 for none.
    KXTextAlign align = KXTextAlignStart;            ///< Without a width, in that of the widest line.
    KXTextVerticalAlign verticalAlign = KXTextTop;   ///< Where the text stands in the height.
    KXTextDirection direction = KXTextDirectionAuto; ///< Which way paragraphs run.
    float lineSpacing = 1;                           ///< From one line to the next, in heights of a line.
    int maxLines = 0;   ///< A longer text is cut there, and an ellipsis shows it; 0 for no limit.
    float tabWidth = 0; ///< From one tab stop to the next; 0 for eight blanks.
    int plain = 0;      ///< Non-zero for no colour spans: braces are braces, as for what players type.
    float outline = 0;  ///< How far an outline reaches around the letters; 0 for none, at most 64.
    KXColor outlineColor = {0, 0, 0, 1}; ///< Its alpha is multiplied by that of the colour drawn with.
    KXPoint shadow = {0, 0};             ///< How far a shadow lies from the text.
    KXColor shadowColor = {0, 0, 0, 0};  ///< The same; a shadow without alpha is none.
};

/// One line of a layout.
struct KXTextLine {
    KXRect rect;    ///< As wide as its text without the blanks at its end, as high as a line.
    float baseline; ///< Where its letters stand.
    int begin;      ///< The index of its first character.
    int end;        ///< The index behind its last one, blanks included but not a line feed.
};

/// What lies at a point.
struct KXTextHit {
    int character; ///< The index of the character in the nearest line that is nearest.
    int caret;     ///< The index of the nearest place for a caret: before or behind that character.
    int inside;    ///< -1 if the point is on the character, 0 if beside it.
};

struct _KXTextParts;

/// A text in a box. It copies what it needs: the text, the font's file, size and fallbacks as they are when
/// it is laid out. The font may be deleted or change its size meanwhile.
class KX_API KXTextLayout {
public:
    /// Without text; it measures 0 and has no lines.
    KXTextLayout();
    /// Lays a text out, see layOut().
    KXTextLayout(const KXFont& font, const char* text, const KXTextOptions& options = KXTextOptions());
    ~KXTextLayout();
    /// Takes the other's text, which is left without.
    KXTextLayout(KXTextLayout&& other) noexcept;
    /// The same.
    KXTextLayout& operator=(KXTextLayout&& other) noexcept;

    /// Lays another text out, or the same in another way. Costs a comparison while all is as it was, so it
    /// may be called in every frame.
    ///
    /// A font that could not be loaded, without fallbacks, gives a layout without lines. Throws
    /// std::bad_alloc when memory is exhausted and is as it was then.
    /// @param font at its size; its rendering offset and #KXAliasMode do not count. @param text UTF-8, no
    /// format; cut to a million bytes. Bytes that are no UTF-8 are question marks, null is an empty text.
    /// @param options how; copied.
    void layOut(const KXFont& font, const char* text, const KXTextOptions& options = KXTextOptions());

    /// Draws it with the top left of its box at @a p. Batches take it; on whole pixels it is sharpest.
    /// Letters outside of colour spans are in @a c, which OpenGL's colour is left at. Without a window
    /// nothing is drawn. The first time in a window, and after the text was laid out anew, it asks for
    /// memory: throws std::bad_alloc, with nothing drawn, when that is exhausted.
    void draw(KXPoint p, KXColor c) const;
    /// The same with nothing but the characters before an index, as if somebody typed: the others keep their
    /// room.
    void drawUpTo(KXPoint p, KXColor c, int index) const;

    /// As wide as the widest line, as high as all lines.
    KXSize size() const;
    /// The text as it is shown, without the codes of colour spans. Valid until it is laid out anew.
    const char* text() const;
    /// Whether #KXTextOptions::maxLines cut it: -1 or 0.
    int isCut() const;
    /// How many lines it has. An empty text has an empty one.
    int lineCount() const;
    /// One of them; all zeros for others.
    KXTextLine line(int index) const;

    /// What lies at a point of the box.
    KXTextHit hit(KXPoint point) const;
    /// Where a caret stands: a rectangle without width before the character at an index, or at the end. Where
    /// a line was wrapped that is at the beginning of the next. An index outside is moved to the end that is
    /// nearer.
    KXRect caret(int index) const;
    /// Writes the rectangles of what lies from one index to before another, line by line from the top, and
    /// more than one for a line where directions mix. @a rects has room for @a most; it may be null.
    /// @return how many there are, which may be more than there was room for.
    int selection(int begin, int end, KXRect* rects, int most) const;

private:
    std::unique_ptr<_KXTextParts> _parts;
};
