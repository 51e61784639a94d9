// What a user does to menus.

#include "ui/KXUIMenuTree.h"

#include "core/ground/LogicClock.h"
#include "input/Keyboard.h"
#include "platform/Desktop.h"

#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>

#include <array>
#include <cmath>
#include <utility>

// The event of the mouse that is being heard is for nobody else.
void _KXUIMenuTree::State::claim() const { claimPointer(menu); }

void _KXUIMenuTree::State::heardMouse(const KXInputEvent& event, const _KXModifiers&) {
    const bool isLeft = event.button == KXMouseLeft;
    isByMouse = true;
    switch (event.type) {
    case KXInputEventMouseDown:
        altIsAlone = false;
        isOpen() ? press(isLeft) : pressClosed(isLeft);
        return;
    case KXInputEventMouseUp:
        if (isLeft)
            release();
        return;
    case KXInputEventMouseWheel:
        altIsAlone = false;
        if (isOpen())
            turnWheel(event.motion.y);
        return;
    default:
        if (isOpen())
            hover();
    }
}

void _KXUIMenuTree::State::pressClosed(bool isLeft) {
    if (!hasTitles || !menu.mouseOver() || isBehindBorrower())
        return;
    claim();
    const int title = titleAt(KXMouseX);
    if (!isLeft || title == -1 || !root.entries[title]->isSelectable())
        return;
    begin();
    open(0, title);
    holdPointer(false);
}

void _KXUIMenuTree::State::holdPointer(bool onEntry) {
    takePointer();
    isPressed = true;
    isPressedInside = onEntry;
    pressed = KXMousePoint;
}

void _KXUIMenuTree::State::press(bool isLeft) {
    claim();
    const Spot at = spot();
    const bool closes = isBar(at.level) && innermost() > 0 && levels[1].place == at.index;
    if (at.level == -1 || (isBar(at.level) && at.index == -1) || (closes && isLeft))
        return dismiss();
    if (!isLeft || at.index == -1)
        return;
    holdPointer(!isBar(at.level));
    lightTo(at);
    settle();
}

// A press that opened something may be let go on an entry; one that did not move is no choice.
void _KXUIMenuTree::State::release() {
    constexpr float dragBegins = 4; // points
    const bool moved = std::abs(KXMousePoint.x - pressed.x) >= dragBegins ||
                       std::abs(KXMousePoint.y - pressed.y) >= dragBegins;
    if (!std::exchange(isPressed, false) || !isOpen() || (!isPressedInside && !moved))
        return;
    const Spot at = spot();
    if (at.level == -1)
        return dismiss();
    if (isBar(at.level) || at.index == -1)
        return;
    _KXMenuEntry& parent = *levels[at.level].entry;
    if (!parent.entries[at.index]->isMenu)
        choose(*parent.entries[at.index], parent);
}

/// The pointer is in no column but those before the innermost.
void _KXUIMenuTree::State::unlightBehind(Spot at) {
    if (at.level < innermost() && !isBar(innermost()))
        levels.back().lit = -1;
}

/// Lights what is under the pointer, and on the way to it the entries whose columns are open.
void _KXUIMenuTree::State::lightTo(Spot at) {
    unlightBehind(at);
    for (int level = 0; level < at.level; ++level)
        levels[level].lit = levels[level + 1].place;
    if (std::exchange(levels[at.level].lit, at.index) == at.index && hoveredLevel == at.level)
        return;
    hoveredLevel = at.level;
    hoverTime = _KXLogicCurrentTime;
    isSettled = false;
}

void _KXUIMenuTree::State::hover() {
    const Spot at = spot();
    unlightBehind(at);
    if (at.level == -1 || (isBar(at.level) && at.index == -1)) {
        hoveredLevel = -1;
        return;
    }
    lightTo(at);
    if (isBar(at.level) && innermost() > 0)
        settle();
}

void _KXUIMenuTree::State::turnWheel(float notches) {
    constexpr float most = 1000, rowsPerNotch = 3;
    claim();
    const Spot at = spot();
    if (at.level == -1 || isBar(at.level) || !(std::abs(notches) <= most))
        return;
    Level& level = levels[at.level];
    const int before = level.scrolled;
    scroll(level, std::lround(-notches * rowsPerNotch * static_cast<float>(rows(*level.entry).line)));
    if (level.scrolled != before)
        hover();
}

void _KXUIMenuTree::State::light(int level, int index) {
    levels[level].lit = index;
    if (!isBar(level))
        reveal(levels[level]);
}

/// Opens the column of what is lit innermost and goes into it.
void _KXUIMenuTree::State::enter(int step) {
    const int level = innermost();
    if (levels[level].lit == -1)
        return;
    open(level, levels[level].lit);
    light(level + 1, levels[level + 1].entry->nextSelectable(-1, step));
}

/// Goes to the title beside, and into its column if one is open.
void _KXUIMenuTree::State::goToTitle(int title) {
    const bool isOpen = innermost() > 0;
    if (title == -1)
        return;
    closeTo(0);
    light(0, title);
    if (isOpen)
        enter(1);
}

void _KXUIMenuTree::State::goIn() {
    const _KXMenuEntry* const entry = lit(innermost());
    if (!isBar(innermost()) && entry && entry->isMenu)
        enter(1);
    else if (hasTitles)
        goToTitle(root.nextSelectable(titleInUse(), 1));
}

void _KXUIMenuTree::State::goOut() {
    if (innermost() > (hasTitles ? 1 : 0))
        closeTo(innermost() - 1);
    else if (hasTitles)
        goToTitle(root.nextSelectable(titleInUse(), -1));
}

int _KXUIMenuTree::State::titleInUse() const { return innermost() > 0 ? levels[1].place : levels[0].lit; }

void _KXUIMenuTree::State::goUp() {
    innermost() > (hasTitles ? 1 : 0) ? closeTo(innermost() - 1) : dismiss();
}

void _KXUIMenuTree::State::move(int step, bool fromEnd) {
    const int level = innermost();
    if (isBar(level) && !fromEnd)
        return enter(step);
    const int next = levels[level].entry->nextSelectable(fromEnd ? -1 : levels[level].lit, step);
    if (next != -1)
        light(level, next);
}

void _KXUIMenuTree::State::chooseLit() {
    _KXMenuEntry* const entry = lit(innermost());
    if (!entry)
        return;
    if (entry->isMenu)
        enter(1);
    else
        choose(*entry, *levels.back().entry);
}

/// What a key writes, and what it writes on a Latin keyboard where that is another script.
static std::array<char32_t, 2> lettersOf(const KXInputEvent& key) {
    const std::string name = _KXKeyNameText(key.key);
    const char32_t letter = _KXOnlyCharacter(name);
    const bool isLatin = letter < 0x250,
               isLetter = key.position >= KXPositionA && key.position <= KXPositionZ;
    return {letter,
            letter && !isLatin && isLetter ? U'a' + static_cast<char32_t>(key.position - KXPositionA) : 0};
}

/// Goes to the entry of the innermost level that has a letter underlined, and chooses it if it is the only
/// one.
bool _KXUIMenuTree::State::useMnemonic(char32_t letter) {
    const int level = innermost();
    const auto has = [letter](const _KXMenuEntry& entry) { return entry.mnemonic == letter; };
    const int next = levels[level].entry->nextWhere(levels[level].lit, has);
    if (next == -1)
        return false;
    light(level, next);
    if (levels[level].entry->nextWhere(next, has) == next)
        chooseLit();
    return true;
}

bool _KXUIMenuTree::State::goToLetter(char32_t letter) {
    const int level = innermost();
    const int next = levels[level].entry->nextWhere(
        levels[level].lit, [letter](const _KXMenuEntry& entry) { return entry.firstLetter == letter; });
    if (next != -1)
        light(level, next);
    return next != -1;
}

void _KXUIMenuTree::State::useLetter(const KXInputEvent& key) {
    for (const char32_t letter : lettersOf(key))
        if (letter && (useMnemonic(letter) || goToLetter(letter)))
            return;
}

/// Opens the menu that has the letter of a key underlined in its title.
bool _KXUIMenuTree::State::useTitleMnemonic(const KXInputEvent& key) {
    for (const char32_t letter : lettersOf(key)) {
        const int title =
            letter
                ? root.nextWhere(-1, [letter](const _KXMenuEntry& entry) { return entry.mnemonic == letter; })
                : -1;
        if (title == -1)
            continue;
        begin();
        closeTo(0);
        light(0, title);
        enter(1);
        return true;
    }
    return false;
}

/// Puts the keyboard into the bar.
void _KXUIMenuTree::State::beginByKey() {
    const int first = root.nextSelectable(-1, 1);
    if (first == -1)
        return;
    begin();
    light(0, first);
    isByMouse = false;
}

/// The modifiers of a shortcut that are held, -1 where there are others.
static int shortcutModifiers(const _KXModifiers& held) {
    if (_KXIsMac ? held.control : held.control && held.command)
        return -1;
    return (held.control || held.command ? KXUICommand : 0) | (held.shift ? KXUIShift : 0) |
           (held.alt ? KXUIAlt : 0);
}

bool _KXUIMenuTree::State::useShortcut(const KXInputEvent& key, const _KXModifiers& modifiers) {
    const int held = shortcutModifiers(modifiers);
    if (held == -1)
        return false;
    const char32_t latin = lettersOf(key)[1];
    const int other = latin ? KXKeyA + static_cast<int>(latin - U'a') : key.key;
    _KXMenuEntry* parent = nullptr;
    _KXMenuEntry* const entry = root.withShortcut(key.key, other, held, parent);
    if (entry)
        choose(*entry, *parent);
    return entry;
}

/// Keys that write letters on some keyboards, with Alt at their right or with Option.
static bool writesLetters(const _KXModifiers& modifiers) {
    return modifiers.alt && (_KXIsMac ? !modifiers.command && !modifiers.control : KXKeyHeld(KXKeyRightAlt));
}

void _KXUIMenuTree::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    if (!isOpen())
        return;
    const bool first = key.type == KXInputEventKeyDown;
    isByMouse = false;
    hoveredLevel = -1;
    switch (key.key) {
    case KXKeyUp:
        return move(-1, false);
    case KXKeyDown:
        return move(1, false);
    case KXKeyHome:
        return move(1, true);
    case KXKeyEnd:
        return move(-1, true);
    case KXKeyRight:
        return goIn();
    case KXKeyLeft:
        return goOut();
    default:
        if (first)
            heardFirstOf(key, modifiers);
    }
}

void _KXUIMenuTree::State::heardFirstOf(const KXInputEvent& key, const _KXModifiers& modifiers) {
    const bool plain = !modifiers.control && !modifiers.command && !modifiers.alt;
    switch (key.key) {
    case KXKeyReturn:
    case KXKeyPadEnter:
    case KXKeySpace:
        return chooseLit();
    case KXKeyEscape:
        return goUp();
    case KXKeyLeftAlt:
        return _KXIsMac ? void() : dismiss();
    case KXKeyF10:
        return dismiss();
    default:
        if (writesLetters(modifiers))
            return;
        if (plain && lettersOf(key)[0])
            useLetter(key);
        else if (!(modifiers.alt && hasTitles && useTitleMnemonic(key)))
            useShortcut(key, modifiers);
    }
}

// Beside the widget that has the keyboard.
void _KXUIMenuTree::State::overheard(const KXInputEvent& event, const _KXModifiers& modifiers) {
    const bool isAlt = event.key == KXKeyLeftAlt && !_KXIsMac;
    if (event.type == KXInputEventFocusLost) {
        altIsAlone = false;
        dismiss();
    } else if (event.type == KXInputEventKeyUp && isAlt && std::exchange(altIsAlone, false)) {
        beginByKey();
    } else if (event.type == KXInputEventKeyDown) {
        altIsAlone = false;
        const _KXFocus* const owner = keyboardOwner();
        if (!hasTitles || isOpen() || inputMethodIsAtWork() || writesLetters(modifiers) ||
            (owner &&
             ((owner->filter && owner->filter->needsAllKeys()) || owner->needsKey(event.key, modifiers))))
            return;
        altIsAlone = isAlt && !modifiers.shift && !modifiers.control && !modifiers.command;
        if (event.key == KXKeyF10 && !shortcutModifiers(modifiers))
            beginByKey();
        else if (!modifiers.alt || modifiers.control || modifiers.command || !useTitleMnemonic(event))
            useShortcut(event, modifiers);
    }
}
