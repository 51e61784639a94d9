#pragma once

#include "text/TextAreaView.h"
#include "ui/EditInput.h"
#include "ui/Focus.h"
#include "ui/ScrollBar.h"

#include <Kobaltrix/KXUITextArea.h>

#include <cstdint>
#include <string>
#include <vector>

/// What an area's header does not show.
struct KXUITextArea::State : _KXFocus {
    explicit State(KXUITextArea& of) : area(of) {}

    KXUITextArea& area;
    _KXLinesEdit edit;
    _KXTextAreaView view{edit};
    std::string composition; ///< What an input method composes.
    std::string placeholder, lineAsked;
    KXTextLayout placeholderLayout, widestNumber;
    std::vector<KXTextLayout> numbers; ///< Of the pieces in view.
    KXUIColors colors = KXCurrentUIColors();

    bool wraps = false, showsNumbers = false, isReadOnly = false, takesTabs = false, tabsAreBlanks = false;
    int tabWidth = 4;
    bool changed = false, changedNow = false; ///< As the last poll told, and what none has told of yet.

    _KXScrollBar bar{true};
    _KXClicks clicks;
    _KXBlink blink;
    std::size_t pressPosition = 0;
    int dragX = 0, dragY = 0;
    std::uint32_t dragStep = 0; ///< The last one in which the pointer was dragged outside,
    unsigned dragTime = 0;      ///< and the milliseconds that it has been there since a row.
    double wheelRest = 0;       ///< Pixels that fine wheels have not made whole yet.
    float wantedX = 0;          ///< Where in their rows keys that go up and down keep to,
    std::uint64_t wantedAt = 0; ///< at that revision.

    /// Where the parts are, in whole pixels.
    struct Box {
        int left, top, right, bottom; ///< Of the text.
        int numbersLeft;
        KXRect bar; ///< No width for none.
    };
    Box box();
    void look();
    void compose(const char* text);
    void press(bool extends);
    void drag();
    void scrollByDragging();
    void selectTo(KXPoint place);
    bool hasBar() const { return bar.rect().size.width > 0 && bar.furthest() > 0; }
    void followBar();
    void turnWheel(KXPoint notches, bool sideways);
    bool moveByKey(int key, const _KXModifiers& modifiers);
    bool needsKey(int key, const _KXModifiers& modifiers) const override {
        return _KXFocus::needsKey(key, modifiers) || _KXIsEditKey(key, modifiers);
    }
    void goTo(std::size_t position, bool select);
    void goByRows(int rows, bool select);
    void eraseByKey(int key, const _KXModifiers& modifiers);
    void putTab();
    void passOn(int key, const _KXModifiers& modifiers);
    void showInputMethodTheCursor();

    void drawNumbers(const Box& box);
    void drawText(const Box& box);
    void drawSelection(KXPoint origin);
    void drawCursor(KXPoint origin);

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardText(const char* typed) override;
    void heardComposition(const char* composed) override { compose(isReadOnly ? "" : composed); }
    void keyboardTaken() override { blink.begin(); }
    void keyboardLost() override { compose(""); }
};
