#pragma once

#include "text/LinesEdit.h"

#include <Kobaltrix/KXTextLayout.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What is seen of a text of many lines in a box: which of them, and where.
///
/// A line is shown in pieces of a kilobyte, each a paragraph by itself, laid out where it is in view and kept
/// by what it says. So nothing here takes longer for a longer text or line. Positions are byte offsets of the
/// text; places are in pixels from the top left of the box.
class _KXTextAreaView {
public:
    struct Look {
        const KXFont* font = nullptr; ///< Without one, or one that could not be loaded, nothing is seen.
        float width = 0, height = 0;
        bool wraps = false;
        int tabWidth = 4; ///< In blanks.
        bool operator==(const Look&) const = default;
    };
    /// What is shown of a line: all of it, but where it is longer than a kilobyte.
    struct Piece {
        std::size_t line, begin, end; ///< Positions.
        bool beginsLine, endsLine;
        bool operator==(const Piece&) const = default;
    };
    /// A piece that is in view.
    struct Shown {
        Piece piece;
        const KXTextLayout* layout;
        int top;
    };
    struct Hit {
        std::size_t under, nearest; ///< The position before the character there, and the one nearest.
    };
    /// Where the text is scrolled to, in a unit that costs nothing to count: about rows.
    struct Extent {
        double total, before, inView;
    };

    explicit _KXTextAreaView(const _KXLinesEdit& edit) : _edit(edit) {}

    /// Looks at the text through a box. Costs nothing while everything stays as it was; where the cursor has
    /// moved or the text has changed, scrolls as little as brings the cursor into view.
    /// @param composition what an input method composes, shown at the cursor.
    void update(const Look& look, const std::string& composition);
    const std::vector<Shown>& shown() const { return _shown; }
    /// The line that the first row is of.
    std::size_t topLine() const { return _edit.lineOf(_top); }
    int rowHeight() const { return _rowHeight; }
    /// Pixels of the rows that lie to the left of the box.
    int scrolledRight() const { return _right; }
    /// Where the cursor is; false if it is out of view. It has no width.
    bool cursorRect(KXRect& rect) const;
    /// Where what is composed lies, as KXTextLayout::selection() has it.
    int compositionRects(KXRect* rects, int most) const;
    /// The same of what is selected in a piece.
    int selectionRects(const Shown& shown, KXRect* rects, int most) const;

    // What follows is for what update() saw last.

    /// What lies at a place, also outside of the box.
    Hit hit(KXPoint place);
    /// The position nearest to @a x in the row so many rows below that of a position; the text's start or end
    /// beyond its first and its last row.
    std::size_t rowsBelow(std::size_t position, int rows, float x);
    /// Where a position stands in its row.
    float xOf(std::size_t position);
    /// Where the row of a position begins, and the last position that is shown in it.
    std::size_t rowStart(std::size_t position);
    std::size_t rowEnd(std::size_t position);

    void scrollBy(double pixels);
    void scrollRightBy(int pixels);
    /// Scrolls to where as much lies before the box, see Extent.
    void scrollTo(double before);
    /// Scrolls so that a position's row is the first.
    void scrollToRowOf(std::size_t position);
    const Extent& extent() const { return _extent; }
    /// Rows that a page brings, at least one.
    int pageRows() const;

    /// How many paragraphs were laid out since this was made.
    std::uint64_t layoutsMade() const { return _layoutsMade; }
    /// Bytes that are shown as one paragraph at most.
    static constexpr std::size_t longestPiece = 1024;

private:
    struct Kept {
        std::string text;
        KXTextLayout layout;
        std::uint64_t used = 0;
        bool isShown = false;
    };
    // A row of a piece.
    struct Row {
        Piece piece;
        int index;
    };
    Piece pieceAt(std::size_t position) const;
    bool pieceAfter(Piece& piece) const;
    bool pieceBefore(Piece& piece) const;
    bool composesIn(const Piece& piece) const;
    Kept& keptLayout(const Piece& piece);
    const KXTextLayout& layoutOf(const Piece& piece) { return keptLayout(piece).layout; }
    int heightOf(const Piece& piece);
    int indexOf(const Piece& piece, std::size_t position) const;
    std::size_t positionOf(const Piece& piece, int index) const;
    Row rowOf(std::size_t position);
    KXTextLine lineOfRow(const Row& row) { return layoutOf(row.piece).line(row.index); }
    std::size_t lastPositionIn(const Row& row);
    std::size_t hitInRow(const Row& row, float x);
    double weightBefore(const Piece& piece) const;
    double weightBehind(const Piece& piece) const;
    void settleTop();
    void revealCursor();
    void revealColumn();
    int show();
    void measure();
    void useFont();
    KXRect placeIn(const Shown& shown, KXRect rect) const;
    const Shown* shownCursor() const;
    int rectsOf(const Shown& shown, int begin, int end, KXRect* rects, int most) const;

    const _KXLinesEdit& _edit;
    Look _look;
    KXTextOptions _options;
    int _rowHeight = 1;
    float _blank = 0; // how wide one is
    unsigned _fontRevision = 0;
    std::uint64_t _revision = 0; // of the text that was seen last
    std::string _composition;
    bool _isSettled = false; // nothing has been scrolled since

    std::size_t _top = 0; // a position in the first piece that is in view,
    double _hidden = 0;   // and how many pixels of it are not
    int _right = 0;       // scrolled to the right,
    int _widest = 0;      // which is possible up to the widest row that was seen
    std::vector<Shown> _shown;
    Extent _extent = {1, 0, 1};

    std::vector<std::unique_ptr<Kept>> _kept;
    std::uint64_t _uses = 0, _layoutsMade = 0;
    std::string _scratch;
};
