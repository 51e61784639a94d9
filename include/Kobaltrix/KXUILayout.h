#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// Widgets in rows, columns and grids, which fill a window also when that is resized.
///
/// @code
/// KXUILayout buttons(KXUIRow), side(KXUIColumn), all(KXUIRow);
/// buttons.add(addButton);
/// buttons.add(removeButton);
/// side.add(heading);
/// side.add(layers, 1); // takes the height that is left
/// side.add(buttons);
/// all.add(side);
/// all.add(canvas, 1);
/// all.setRect({8, 8}, {size.width - 16, size.height - 16}); // in every frame
/// @endcode
///
/// A layout owns nothing: it moves and sizes widgets, which are polled and drawn as ever. What is added and
/// ends leaves its layout, and a widget or layout is in one layout at most, the last it was added to.

/// How the cells of a layout lie.
enum KXUILayoutKind : int {
    KXUIRow = 0,    ///< Beside each other.
    KXUIColumn = 1, ///< Below each other.
    KXUIGrid = 2    ///< In rows of as many cells as the grid has columns.
};

/// Where something stands in a cell that is larger than it.
enum KXUIPlace : int {
    KXUIPlaceFill = 0,   ///< It takes the whole cell; a label, which is as high as its lines, the middle.
    KXUIPlaceStart = 1,  ///< At the left or the top, in its natural size.
    KXUIPlaceCentre = 2, ///< In the middle.
    KXUIPlaceEnd = 3     ///< At the right or the bottom.
};

/// How something lies in a layout. Numbers that make no sense count as 0.
struct KXUILayoutItem {
    float width = 0;  ///< Its natural width in pixels; 0 for its own.
    float height = 0; ///< Its natural height in pixels; 0 for its own.
    /// The share that its column has in the width that is left over once each has its natural one. Columns
    /// with a share give way where there is too little.
    float stretchWidth = 0;
    float stretchHeight = 0;              ///< The same for its row and the height.
    KXUIPlace horizontal = KXUIPlaceFill; ///< Where it stands in the width of its cell.
    KXUIPlace vertical = KXUIPlaceFill;   ///< Where it stands in the height.
};

struct _KXUILayoutParts;

/// A row, a column or a grid of widgets, of other layouts and of space.
///
/// The natural size of a widget is the one that it was given last by anybody else than a layout: of a button
/// the one that fits its caption, also when that changes. That of a label is one line; in less width it is
/// wrapped and higher. What is hidden takes no room. A row gives the whole height to each of its cells, and a
/// column the whole width; else cells that do not stretch keep their natural sizes. Cells lie on whole
/// pixels; what does not fit is not cut.
class KX_API KXUILayout {
public:
    /// A layout without cells, with a gap of 4 and no padding.
    /// @param kind how its cells lie. @param columns of a grid, at least 1; the other kinds have their own.
    explicit KXUILayout(KXUILayoutKind kind, int columns = 2);
    /// Lets go of what is in it, and leaves the layout that it is in.
    ~KXUILayout();
    KXUILayout(const KXUILayout&) = delete;
    KXUILayout& operator=(const KXUILayout&) = delete;

    /// Adds a widget behind the others. @param widget not owned. @param stretch its share in what is left
    /// over along a row or a column; in a grid that of its column in the width. Throws std::bad_alloc, with
    /// nothing changed, when memory is exhausted, as do the next ones.
    void add(_KXUIWidget& widget, float stretch = 0);
    /// The same in all detail.
    void add(_KXUIWidget& widget, const KXUILayoutItem& item);
    /// Adds another layout; one that holds this one, or is it, is not added.
    void add(KXUILayout& layout, float stretch = 0);
    /// The same in all detail.
    void add(KXUILayout& layout, const KXUILayoutItem& item);
    /// Adds an empty cell. @param length pixels along the row or column. @param stretch its share.
    void addSpace(float length, float stretch = 0);
    /// Takes a widget out, which stays where it is. Does nothing with one that is not in it.
    void remove(_KXUIWidget& widget);
    /// Takes a layout out.
    void remove(KXUILayout& layout);

    void setGap(float gap);         ///< Pixels between cells.
    void setPadding(float padding); ///< Pixels around all cells.

    /// The size in which everything has its natural one.
    KXSize size() const;
    /// Places everything in a rectangle, pixels. Costs a look at each widget while nothing has changed, so it
    /// may be called in every frame.
    void setRect(KXPoint origin, KXSize size);

    // Used by the library itself.
    KX_INTERNAL void _forget(const _KXUIWidget& widget);

private:
    std::unique_ptr<_KXUILayoutParts> _parts;
};
