#pragma once

#include "text/TextEdit.h"

#include <Kobaltrix/KXTypes.h>

#include <string>
#include <vector>

class KXFont;

/// What is seen of a line of text that may be longer than its box: which of its characters, and where.
///
/// Only characters in the box are ever measured, so a text's length costs nothing. The first one seen begins
/// at the left edge; positions are byte offsets of the text, x is in pixels from the left edge.
class _KXTextView {
public:
    /// Looks at a text through a box. Costs nothing while everything stays as it was.
    /// @param font null sees nothing. @param masked shows an asterisk for each character. @param follows
    /// scrolls so that the cursor is in view, no further than needed, and no space is left behind the end
    /// while characters are hidden before the start; without it the start is in view.
    void update(const _KXTextEdit& edit, KXFont* font, float width, bool masked, bool follows);

    /// The position nearest to @a x, also outside of the box.
    std::size_t positionNearest(float x) const { return hit(x).nearest; }
    /// The position before the character at @a x, also outside of the box.
    std::size_t positionUnder(float x) const { return hit(x).under; }
    /// Where a position is; the edges stand for those out of view.
    float xOf(std::size_t position) const;
    /// The characters in view, the last one perhaps in part, or an asterisk for each.
    const char* shown() const { return _shown.c_str(); }

private:
    struct Stop {
        std::size_t position; // of a character in the text, the last one's end included
        std::size_t shown;    // the same in what is shown
        float x;
    };
    struct Hit {
        std::size_t under, nearest;
    };
    struct Key {
        std::uint64_t revision;
        KXFont* font;
        unsigned fontRevision, graphicsContext;
        float width;
        bool masked, follows;

        bool operator==(const Key&) const = default;
    };
    float advance(std::size_t position) const;
    std::size_t startBefore(std::size_t position, float width) const;
    void scroll();
    void layOut();
    Hit hit(float x) const;

    Key _key = {};
    bool _isLaidOut = false;            // for the key; a font that runs out of memory may throw in the middle
    const _KXTextEdit* _edit = nullptr; // while update() or a hit() right after it runs
    std::size_t _first = 0;
    std::vector<Stop> _stops;
    std::string _shown;
};
