#pragma once

#include <Kobaltrix/KXUIListBox.h>

#include "text/RowText.h"
#include "ui/Focus.h"

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
    State();
    static bool anyButtonHeld();

    std::vector<std::string> rows;
    int selected = -1;
    int activated = -1;
    bool changed = false;
    std::int64_t scrolled = 0; ///< Pixels of the content that lie above the box.
    int rowToReveal = -1; ///< Scrolled to when the layout is next looked at: the box may have no size yet.

    int buttonHeld; ///< At first as it is: a press that began before the list was made does not count.
    enum class Press { Row, Knob, Track };
    Press press = Press::Row;        ///< Where the press began that has the pointer.
    int grip = 0;                    ///< From the knob's top to where it was gripped.
    std::uint32_t pageStep = 0;      ///< In which the press beside the knob began.
    int lastPressed = -1;            ///< The row that a second press would activate.
    std::uint32_t lastPressTime = 0; ///< Logic time in milliseconds, like all times here.
    bool wheelSeen = false;
    std::uint32_t wheelTime = 0; ///< Of the frame whose notch has been counted, once there was one.

    std::string word; ///< That rows are looked up by.
    std::uint32_t wordTime = 0;

    _KXSpans spans = _KXSpans::Colored;
    // What the rows in view show, row n at n modulo their number, and what they were measured for.
    struct Shown {
        int row = -1;
        std::string text;
    };
    std::vector<Shown> shown;
    unsigned shownFontRevision = 0;
    int shownWidth = 0;

    bool holds(Press part) const { return press == part && hasPointer(); }

protected:
    void keyboardTaken() override { word.clear(); }
};
