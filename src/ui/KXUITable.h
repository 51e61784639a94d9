#pragma once

#include "ui/ItemList.h"
#include "ui/ScrollBar.h"

#include <Kobaltrix/KXUITable.h>

#include <string>
#include <unordered_map>
#include <vector>

struct KXUITable::State : _KXItemList {
    explicit State(KXUITable& table) : _KXItemList(table) {}

    struct Column {
        std::string title;
        float width;
        KXTextAlign align;
        bool isNumeric;
        KXTextLayout layout; ///< Of the title.
    };
    struct Row : _KXListItem {
        int id = 0;
        std::vector<std::string> cells;
        std::string key; ///< What it is sorted by, as a text or as a number.
        double value = 0;
        bool hasKey = false;
    };
    std::vector<Column> columns;
    std::unordered_map<int, Row> rows; ///< By their numbers; they stay where they are.
    std::vector<Row*> order;           ///< As they stand.
    int lastID = 0;
    int sort = -1;
    bool descending = false;
    bool isShown = true; ///< All is in its order.
    int activated = 0;
    bool sorted = false, sortedNow = false;

    float scrolledRight = 0;
    _KXScrollBar bar{false};
    int pressed = -1; ///< The column whose title is held,
    int dragged = -1; ///< or whose border is,
    int grip = 0;     ///< and how far from it.
    int lastBorder = -1;
    std::uint32_t lastBorderTime = 0;

    Row* find(int id);
    bool isColumn(int column) const { return column >= 0 && column < static_cast<int>(columns.size()); }
    Column& columnOf(int column) { return columns[static_cast<std::size_t>(column)]; }
    void look();
    void sortRows();
    void sortTo(int column, bool descends);
    void makeKey(Row& row) const;
    void forgetKeys();
    void lay();
    float headerHeight() const { return static_cast<float>(rowHeight()) + 2; }
    float left() const; ///< Of the first column.
    float rightOf(int column) const;
    int titleAt(int x) const;
    int borderAt(int x) const;
    bool isInHeader();
    void pressHeader();
    void fit(int column);
    void userSorts(int column);
    void scrollRight(float pixels);
    void drawHeader();

    const char* textOf(const _KXListItem& item) const override;
    void drawRow(const _KXListItem& item, KXRect box, KXColor text) override;

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
};
