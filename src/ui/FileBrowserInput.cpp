// What a user does to a file browser.

#include "ui/KXUIFileBrowser.h"

#include "ui/Shortcuts.h"

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

/// What made the game show the browser is not for it.
void KXUIFileBrowser::State::skipStep() {
    pressedButton = nullptr;
    for (_KXFocus* part :
         std::initializer_list<_KXFocus*>{this, &list._focus(), &places._focus(), &name._focus()})
        part->skipUnheard();
    for (KXUIButton* button : buttons) { // nor what hide() cut short
        button->setSize(KXZeroSize);
        button->_KXUIWidget::clicked(KXMouseLeft);
    }
}

// Keys that neither list nor line keeps for itself.
bool KXUIFileBrowser::State::keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    if (modifiers.alt)
        return false;
    if (key.key == KXKeyTab)
        focusNext(modifiers.shift);
    else if (_KXIsShortcut(modifiers))
        return useShortcut(key.key);
    else if (key.key == KXKeyF2)
        beginTask(Task::Rename);
    else if (key.key == KXKeyF5)
        browser.refresh();
    else if (key.key == KXKeyBackspace && list.hasFocus())
        goUp();
    else if (key.key == KXKeyEscape)
        cancel();
    else if ((key.key == KXKeyReturn || key.key == KXKeyPadEnter) && list.hasFocus() &&
             list.selectedIndex() == -1)
        pressed(); // what stands in the line
    else
        return false;
    return true;
}

bool KXUIFileBrowser::State::useShortcut(int key) {
    if (key == KXKeyN)
        beginTask(Task::MakeFolder);
    else if (key == KXKeyH)
        browser.setShowsHiddenFiles(!filter.showsHidden);
    else if (key >= KXKey1 && key <= KXKey3)
        sortBy(static_cast<_KXListingOrder>(key - KXKey1));
    else
        return false;
    return true;
}

// List, name, and the places where there is room for them.
void KXUIFileBrowser::State::focusNext(bool back) {
    const bool hasPlaces = places.rect().size.width > 0;
    const int focused = name.isFocused() ? 1 : places.hasFocus() ? 2 : 0, count = hasPlaces ? 3 : 2;
    const int next = (focused + (back ? count - 1 : 1)) % count;
    if (next == 0)
        list.setFocus(-1);
    else if (next == 1)
        name.focus();
    else
        places.setFocus(-1);
}

/// Takes back what was begun last: a question, a new name, the browser.
void KXUIFileBrowser::State::cancel() {
    cancelled = asked.empty() && task == Task::Choose;
    endTask();
    dropQuestion();
}

void KXUIFileBrowser::State::goToPlace(int row) {
    const std::string to = placeFolders[row];
    enter(to, "");
    places.setSelectedIndex(row);
}

// Buttons are clicked in the order of what else happens, also within a step.
void KXUIFileBrowser::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (event.type == KXInputEventMouseDown)
        wasPressed = browser.mouseOver();
    if (event.button != KXMouseLeft || modifiers.control ||
        (event.type != KXInputEventMouseDown && event.type != KXInputEventMouseUp))
        return;
    const auto under = std::ranges::find_if(buttons, [](KXUIButton* button) { return button->mouseOver(); });
    const KXUIButton* const button = under == std::end(buttons) ? nullptr : *under;
    const std::string* const crumb = button ? nullptr : crumbs.pathAt(KXMousePoint);
    const std::string path = crumb ? *crumb : "";
    if (event.type == KXInputEventMouseDown) {
        pressedButton = button;
        pressedCrumb = path;
    } else if (!path.empty() && path == pressedCrumb)
        enterPart(path);
    else if (const KXUIButton* pressed = std::exchange(pressedButton, nullptr); pressed && pressed == button)
        click(*pressed);
}

void KXUIFileBrowser::State::click(const KXUIButton& button) {
    if (&button == &up)
        goUp();
    else if (&button == &hidden)
        browser.setShowsHiddenFiles(!filter.showsHidden);
    else if (&button == &newFolder)
        beginTask(Task::MakeFolder);
    else if (&button == &confirm)
        pressed();
    else if (&button == &dismiss)
        cancel();
    else
        sortBy(static_cast<_KXListingOrder>(&button - columns));
}

static bool isPress(std::uint64_t number) {
    const _KXStepInput& step = _KXStep();
    return number >= step.pastNumber &&
           step.past[number - step.pastNumber].event.type == KXInputEventMouseDown;
}

/// Goes through the step event by event, so that what a part is told has had its effect on the others before
/// they are told of the next.
void KXUIFileBrowser::State::hearStep() {
    const std::uint64_t end = _KXNextEventNumber();
    std::uint64_t number = std::min({firstUnheard(), list._focus().firstUnheard(),
                                     name._focus().firstUnheard(), places._focus().firstUnheard()});
    while (number++ < end && !isDone()) {
        hear(number);
        const bool question = !asked.empty();
        const int toldByList = isDone() ? 0 : list._pollUntil(number);
        const int toldByName = isDone() ? 0 : name._pollUntil(number);
        // Of four quick clicks the last two are meant for the file and not for the question.
        if (!question || !toldByList || list.selectionChanged() || !isPress(number - 1))
            hearParts(toldByList, toldByName);
        // A press goes to a place, and Return: keys that only pass by do not.
        if (!isDone() && places._pollUntil(number) &&
            (places.activatedIndex() != -1 || (places.selectionChanged() && isPress(number - 1))))
            goToPlace(places.selectedIndex());
        if (!isDone())
            keepFocus();
    }
    if (isDone())
        return;
    places.poll();
    const int toldByList = list.poll(); // what time does
    hearParts(toldByList, name.poll());
}

void KXUIFileBrowser::State::hearParts(int toldByList, int toldByName) {
    if (isDone())
        return;
    if (toldByName && name.changed() && task == Task::Choose) {
        if (!*name.text())
            picked.clear(); // its bytes may be shown as an empty line
        list.setSelectedIndex(-1);
        dropQuestion();
        message.clear();
    }
    if (toldByList)
        endTask();
    if (toldByList && list.selectionChanged() && list.selectedIndex() != -1)
        selected(list.selectedIndex());
    const int activated = toldByList ? list.activatedIndex() : -1;
    if (activated != -1 && entries[activated].isFolder)
        enter(_KXPathIn(folder, entries[activated].name), "");
    else if (activated != -1) {
        putName(entries[activated].name);
        pressed();
    } else if (toldByName && name.entered())
        pressed();
}

// A press on a button or between the parts leaves the keyboard where it was.
void KXUIFileBrowser::State::keepFocus() {
    const bool pressedHere = std::exchange(wasPressed, false);
    if (name.isFocused() || list.hasFocus() || places.hasFocus())
        nameHadFocus = name.isFocused();
    else if (pressedHere && !_KXFocus::keyboardOwner())
        nameHadFocus ? name.focus() : list.setFocus(-1);
}

int KXUIFileBrowser::poll() {
    State& state = *_state;
    if (!state.isShown || !_takesInput())
        return 0;
    for (KXUIButton* button : state.buttons)
        button->_KXUIWidget::clicked(KXMouseLeft); // for how they look
    state.hearStep();
    if (!state.isDone()) {
        return 0;
    }
    hide();
    return -1;
}
