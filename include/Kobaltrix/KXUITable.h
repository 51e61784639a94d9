#pragma once

#include <Kobaltrix/KXTextLayout.h>
#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <initializer_list>
#include <memory>

/// @file
/// Rows of texts in columns, which are sorted by their titles.

/// A column of a KXUITable.
struct KXUITableColumn {
    const char* title = "";              ///< Copied; null for none.
    float width = 100;                   ///< Pixels, at least 16.
    KXTextAlign align = KXTextAlignLeft; ///< Of its texts and its title.
    int numeric = 0;                     ///< Non-zero to sort by the numbers that its texts begin with.
};

/// A list of rows that have a text in each of some columns.
///
/// @code
/// KXUITable scores;
/// scores.addColumn({"Name", 140}); // so from C++14 on
/// scores.addColumn({"Nights", 60, KXTextAlignRight, -1});
/// const int lil = scores.addRow({"Lil", "12"});
/// if (scores.poll() && scores.activatedRow()) // in a logic step
///     show(scores.activatedRow());
/// @endcode
///
/// Its rows are worked as those of a #KXUIListBox are, several that are selected included; letters find rows
/// by the column that they are sorted by, or the first. A click on a title sorts by its column, another one
/// the other way round: in any case, with numbers by their value and letters with accents beside those
/// without, and rows that are alike in the order in which they were added. The border behind a title is
/// dragged to make its column wider or narrower, and a second press on it within half a second makes it as
/// wide as what is in view needs. Where columns are wider than the table, the wheel scrolls sideways with
/// Shift, as do Left, Right and a bar. With the keyboard, Control (Command on macOS) and 1 to 9 sort by one
/// of the first columns, and with Shift fit its width.
///
/// Rows have numbers from 1 on, which stay theirs, wherever they stand, until they are removed, and are never
/// given again. Another number is no row, and one of a column that is none is no column: they change nothing
/// and give the neutral result. A hundred thousand rows cost a frame no more than those in view; sorting them
/// anew, also where rows came or changed since, takes some tenths of a second.
///
/// Texts are laid out, with colour spans, and end with an ellipsis where they do not fit.
class KX_API KXUITable : public _KXUIWidget {
public:
    /// Without columns and rows.
    KXUITable();
    ~KXUITable() override;

    /// Appends a column. @return its number, from 0 on.
    int addColumn(const KXUITableColumn& column);
    /// How many there are.
    int columnCount() const;
    /// Sets a column's width, rounded to whole pixels. @return -1, or 0 if there is no such column.
    int setColumnWidth(int column, float pixels);
    /// Its width, 0 if there is no such column.
    float columnWidth(int column) const;
    /// Makes a column as wide as its title and the rows in view need, if there is a font.
    /// @return -1, or 0 if there is no such column.
    int fitColumn(int column);

    /// Adds a row: at the end, or where it is sorted to. @param cells its texts, copied; null for an empty
    /// one, as are those that lack. More than there are columns are left out. @return its number.
    int addRow(std::initializer_list<const char*> cells = {});
    /// Changes a text. @return -1, or 0 if there is no such row or column or @a text is null.
    int setCell(int row, int column, const char* text);
    /// A text, null if there is no such row or column. It belongs to the table, until it changes.
    const char* cell(int row, int column) const;
    /// Removes a row. @return -1, or 0 if there is no such row.
    int removeRow(int row);
    /// Removes all rows.
    void clear();
    /// How many rows there are.
    int rowCount() const;
    /// The row that stands at a place, counted from 0 from the top; 0 if there is none.
    int rowAt(int place) const;
    /// The row at a position in pixels, 0 if there is none.
    int rowUnder(KXPoint point);

    /// Sorts by a column, from its greatest on for a non-zero @a descending; -1 for the order in which rows
    /// were added. @return -1, or 0 if there is no such column.
    int sortBy(int column, int descending = 0);
    /// What it is sorted by, -1 for nothing.
    int sortColumn() const;
    /// -1 if the greatest come first, else 0.
    int isDescending() const;

    /// The selected row, 0 for none. Where several can be, the one that the user came to last: keys move from
    /// it, and it may have been taken out again.
    int selectedRow() const;
    /// Selects a row, alone, and scrolls to it; 0 selects none. @return -1, or 0 if there is no such row.
    int setSelectedRow(int row);
    /// Lets the user select several rows for a non-zero @a multiple; at first, and for 0, one.
    void setMultipleSelection(int multiple);
    /// -1 if a row is selected, else 0.
    int isSelected(int row) const;
    /// Takes a row into the selection for a non-zero @a selected, out of it for 0.
    /// @return -1, or 0 if there is no such row.
    int setSelected(int row, int selected);
    /// The selected row that stands next below @a after, 0 for none: to walk through them, from 0 on.
    int nextSelectedRow(int after) const;
    /// Scrolls by as little as brings a row into view. @return -1, or 0 if there is no such row.
    int scrollTo(int row);

    /// Gives the table the keyboard for a non-zero @a focus, takes it for 0.
    void setFocus(int focus);
    /// -1 while the table has the keyboard, else 0.
    int hasFocus() const;

    /// Takes the user's doing of one logic step in. @return -1 if the user changed what is selected, sorted,
    /// or activated a row in this call, else 0.
    int poll();
    /// -1 if the user changed what is selected in the last poll(), else 0.
    int selectionChanged() const;
    /// -1 if the user sorted in the last poll(), else 0.
    int sortChanged() const;
    /// The row that the user activated in the last poll(), by a second press or Return; 0 for none.
    int activatedRow() const;

    /// Like _KXUIWidget::setFont().
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize().
    int setFontSize(int size) override;
    /// See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;
    /// Its colours where the theme has no palette; at first those of KXCurrentUIColors(). Titles are in that
    /// of interaction.
    void setColors(const KXUIColors& colors);
    /// Draws the table into the current target. Texts that come into view are laid out: throws std::bad_alloc
    /// when memory is exhausted.
    void draw() override;
    int pollInPanel() override;                   ///< poll().
    int takesWheel() const override;              ///< -1.
    KXUIDescription description() const override; ///< The row that is selected is its value.
    _KXFocus* keyboardPart() override;

private:
    struct KX_INTERNAL State;
    std::unique_ptr<State> _state;
};
