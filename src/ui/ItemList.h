#pragma once

#include "ui/Focus.h"

#include <Kobaltrix/KXTextLayout.h>
#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIListBox.h>

#include <vector>

/// What stands in a row: derived from by what a widget holds for it.
struct _KXListItem {
    int row = -1; ///< Which it stands in, -1 while it is not shown.
};

/// A list whose rows another widget holds and draws: the list scrolls, selects and finds them. What is
/// selected goes along with its item wherever the widget shows it.
class _KXItemList : public _KXFocus {
public:
    explicit _KXItemList(_KXUIWidget& of);

    /// Shows items in an order. What is not among them is not selected any more. Where memory lacks, which
    /// it throws, nothing has changed.
    void show(std::vector<_KXListItem*> items);
    /// An item that is shown ends.
    void forget(_KXListItem& item);
    const std::vector<_KXListItem*>& items() const { return _items; }
    /// The item of a row, null for a number that is none.
    _KXListItem* itemAt(int row) const;
    /// The one that keys move from.
    _KXListItem* selected() const { return itemAt(list.selectedIndex()); }
    /// Selects an item alone, as the user does or as the game.
    void userSelects(const _KXListItem& item);

    /// Brings the list to where its widget is. To be called before anything asks where rows are.
    void place(KXRect rect);
    void setColors(const KXUIColors& of);
    /// Hears the step. @return -1 if the user selected, activated, or did what touched() tells of.
    int poll();
    void touched() { _touched = true; }
    int rowHeight() const;
    /// The layout that keeps what stands in a cell of a row in view, of so many in each row. It is made at
    /// once for all, so it asks for memory only when the list has become larger.
    KXTextLayout& layoutOf(int row, int cell, int cells);

    virtual const char* textOf(const _KXListItem& item) const = 0; ///< By which typed letters find it.
    virtual void drawRow(const _KXListItem& item, KXRect box, KXColor text) = 0;

    _KXUIWidget& widget;
    KXUIListBox list;
    KXUIColors colors = KXCurrentUIColors();

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardText(const char* text) override;
    void keyboardTaken() override;
    /// A press that is not for the rows was heard: it holds nothing.
    void pressBeside();

private:
    std::vector<_KXListItem*> _items; // one for each row, null for one that has ended
    std::vector<KXTextLayout> _layouts;
    bool _touched = false;
};
