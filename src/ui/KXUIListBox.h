#pragma once

#include <Kobaltrix/KXUIListBox.h>

#include "text/RowText.h"
#include "ui/Focus.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class KXFont;

/// Where things are, in whole pixels as drawing truncates them; scrolled distances in 64 bits, because a long
/// list is higher than an int can count.
struct KXUIListBox::Layout {
    int left, top, right, bottom; ///< Within the border.
    int rowHeight;
    int rowsRight; ///< Where the scroll bar begins, or the right edge.
    bool scrolls;
    std::int64_t contentHeight;
    std::int64_t furthest; ///< The scrolled distance at which the last row ends at the bottom.
    int knobTop, knobBottom;

    int viewHeight() const { return bottom - top; }
    /// Rows that a turned page brings, at least one.
    int pageRows() const { return viewHeight() > rowHeight ? viewHeight() / rowHeight : 1; }
    /// Pixels that the knob can travel.
    int knobTravel() const { return viewHeight() - (knobBottom - knobTop); }
};

struct KXUIListBox::State : _KXFocus {
    explicit State(KXUIListBox& listBox) : box(listBox) {}

    struct Row {
        std::string text;
        bool isSelected = false; ///< Among several.
    };
    KXUIListBox& box;
    _KXFocus* whole = this; ///< That hears for it: itself, or what it is a part of.
    std::vector<Row> rows;
    class _KXItemList* items = nullptr; ///< That hold what the rows say and draw it, null for the rows.
    int selected = -1;                  ///< The one, or of several the one that keys move from.
    bool several = false;               ///< Whether the user may select them.
    int anchor = -1;                    ///< Where a selection of several rows in a row began.
    int activated = -1; ///< As the last poll told, and the user's doing that none has told of yet.
    bool changed = false;
    int activatedNow = -1;
    bool changedNow = false;
    std::int64_t scrolled = 0; ///< Pixels of the content that lie above the box.
    int rowToReveal = -1; ///< Scrolled to when the layout is next looked at: the box may have no size yet.

    enum class Press { Nothing, Row, Rows, Knob, Track }; ///< Rows are dragged over.
    Press press = Press::Nothing;                         ///< Where the press began that has the pointer.
    int grip = 0;                                         ///< From the knob's top to where it was gripped.
    int pressY = 0;                                       ///< Of a press on a row.
    std::uint32_t pageStep = 0;                           ///< In which the press beside the knob began.
    std::uint32_t dragStep = 0;                           ///< The last one in which rows were dragged over,
    unsigned dragTime = 0;           ///< and the milliseconds that the pointer has been outside since a row.
    int lastPressed = -1;            ///< The row that a second press would activate.
    std::uint32_t lastPressTime = 0; ///< Logic time in milliseconds, like all times here.
    double wheelRest = 0;            ///< Pixels that fine wheels have not made whole yet.

    std::string word; ///< That rows are looked up by.
    std::uint32_t wordTime = 0;

    _KXSpans spans = _KXSpans::Colored;
    // What stands behind the rows' texts in columns of their own, each as wide as said: at its right end.
    std::vector<std::array<std::string, 2>> details; ///< One for each row, or none.
    std::array<int, 2> detailWidths = {0, 0};
    // What the rows in view show, row n at n modulo their number, and what they were measured for.
    struct Shown {
        int row = -1;
        std::string text;
        std::array<float, 2> detailWidths = {0, 0};
    };
    std::vector<Shown> shown;
    unsigned shownFontRevision = 0;
    int shownWidth = 0;

    bool holds(Press part) const { return press == part && whole->hasPointer(); }
    bool needsKey(int key, const _KXModifiers& modifiers) const override;

    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardText(const char* text) override { box._findTyped(text); }
    void keyboardTaken() override { word.clear(); }
};
