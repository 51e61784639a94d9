#include <Kobaltrix/KXUITextEntry.h>

#include "core/LogicClock.h"
#include "core/Truncate.h"
#include "core/UIColors.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"
#include "render/GLCheck.h"
#include "ui/ClipScope.h"
#include "ui/TextEdit.h"
#include "ui/TextInput.h"
#include "ui/TextView.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

static constinit KXUITextEntry* focusedEntry = nullptr;
// Has the focus, but hands it to the next entry that is polled.
static constinit KXUITextEntry* offeringEntry = nullptr;
static constinit KXUITextEntry* lastPolledEntry = nullptr;

KXUITextEntry* KXUIFocusedTextEntry() { return focusedEntry; }

struct KXUITextEntry::Editor {
    _KXTextEdit edit;
    std::string placeholder;
    // What an input method composes, and the text with it in place, which is shown meanwhile.
    std::string composition;
    _KXTextEdit composed;
    _KXTextView view;

    bool mouseHeld = _KXMouseButtonLeft; // a press that began before the entry was there is none for it
    bool dragging = false;
    int clicks = 0; // in quick succession at one place
    int pressX = 0, pressY = 0, dragX = 0;
    std::uint32_t pressTime = 0;
    std::size_t pressPosition = 0;
    int repeatingKey = 0;
    std::int32_t repeatTime = 0;
    std::uint32_t blinkTime = 0; // the cursor is seen for half a second from then on
    std::uint64_t blinkRevision = 0;

    const _KXTextEdit& shown() const { return composition.empty() ? edit : composed; }
    bool reports(int key, bool repeats = false);
    int countClicks();
    void compose(std::string text);
};

namespace {
enum Key : int {
    keyA = 1,
    keyC = 3,
    keyV = 22,
    keyX = 24,
    keyReturn = 53,
    keyTab = 54,
    keyDelete = 55,
    keyBackspace = 56,
    keyEscape = 69,
    keyPadEnter = 97,
    keyRight = 100,
    keyLeft = 101,
    keyHome = 103,
    keyEnd = 104,
    keyLeftShift = 122,
    keyLeftAlt = 124,
    keyRightCommand = 131,
    keyLeftControl = 135
};

// A modifier is two keys with neighbouring numbers.
bool isEitherHeld(int key) { return _KXKeyTextEntry(key, 0) || _KXKeyTextEntry(key + 1, 0); }
bool isShiftHeld() { return isEitherHeld(keyLeftShift); }
bool isAltHeld() { return isEitherHeld(keyLeftAlt); }
bool isControlHeld() { return isEitherHeld(keyLeftControl); }
bool isCommandHeld() { return (isControlHeld() || isEitherHeld(keyRightCommand)) && !isAltHeld(); }

// Keys that are down now were not meant for the entry that gets the focus. Only the entries' own record of
// them changes, not the time that the game's repeats go by.
void takeHeldKeysAsReported() {
    for (int key = 0; key < _KXKeyCount; ++key)
        if (_KXKeys[key])
            _KXKeysTextEntryDown[key] = -1;
}

KXColor halfOpaque(KXColor color) { return {color.r, color.g, color.b, color.a / 2}; }

int toInt(std::size_t number) { return static_cast<int>(std::min<std::size_t>(number, INT_MAX)); }
} // namespace

// -1 for a press not seen yet and then, as the game's delayed repeat does, for each step from the 30th on.
// The repeat has a time of its own, since the game may be reading the same key.
bool KXUITextEntry::Editor::reports(int key, bool repeats) {
    if (_KXKeyTextEntry(key, -1)) {
        repeatingKey = key;
        repeatTime = static_cast<std::int32_t>(_KXLogicCurrentTime);
        return true;
    }
    return repeats && key == repeatingKey && _KXKeyTextEntry(key, 0) && _KXRepeatIsDue(repeatTime);
}

int KXUITextEntry::Editor::countClicks() {
    constexpr std::uint32_t quick = 500; // milliseconds
    constexpr int near = 4;              // points
    const bool again = clicks > 0 && _KXLogicCurrentTime - pressTime <= quick &&
                       std::abs(KXMouseX - pressX) <= near && std::abs(KXMouseY - pressY) <= near;
    clicks = again ? clicks % 3 + 1 : 1;
    pressTime = _KXLogicCurrentTime;
    pressX = dragX = KXMouseX;
    pressY = KXMouseY;
    return clicks;
}

void KXUITextEntry::Editor::compose(std::string text) {
    if (text == composition && text.empty())
        return;
    composition = std::move(text);
    composed = edit;
    composed.setMaximumLength(static_cast<std::size_t>(-1));
    composed.insert(composition.c_str());
}

KXUITextEntry::KXUITextEntry()
    : _backgroundColor(_KXUIBackroundColor), _borderColor(_KXUIBorderColor), _focusColor(_KXUIFocusColor),
      _textColor(_KXUITextColor), _placeholderColor(halfOpaque(_KXUITextColor)),
      _selectionColor(halfOpaque(_KXUIFocusColor)), _editor(new Editor), _masked(0), _changed(0),
      _entered(0) {}

KXUITextEntry::~KXUITextEntry() {
    unfocus();
    if (lastPolledEntry == this)
        lastPolledEntry = nullptr;
    delete _editor;
}

void KXUITextEntry::setText(const char* text) { _editor->edit.setText(text); }

const char* KXUITextEntry::text() const { return _editor->edit.text().c_str(); }

int KXUITextEntry::length() const { return toInt(_editor->edit.length()); }

void KXUITextEntry::setMaximumLength(int characters) {
    _editor->edit.setMaximumLength(static_cast<std::size_t>(characters > 0 ? characters : -1));
}

int KXUITextEntry::maximumLength() const {
    const std::size_t characters = _editor->edit.maximumLength();
    return characters == static_cast<std::size_t>(-1) ? 0 : toInt(characters);
}

void KXUITextEntry::setMasked(int masked) {
    _masked = masked ? -1 : 0;
    _editor->edit.setSecret(masked);
}

int KXUITextEntry::isMasked() const { return _masked; }

void KXUITextEntry::setPlaceholder(const char* text) { _editor->placeholder = text ? text : ""; }

void KXUITextEntry::select(int start, int count) {
    _KXTextEdit& edit = _editor->edit;
    const auto first = static_cast<std::size_t>(std::max(0, start));
    const std::size_t anchor = edit.positionOfCharacter(first);
    edit.select(anchor, edit.positionOfCharacter(first + static_cast<std::size_t>(std::max(0, count))));
}

void KXUITextEntry::selectAll() { _editor->edit.selectAll(); }

int KXUITextEntry::cursor() const { return toInt(_editor->edit.characterAt(_editor->edit.cursor())); }

int KXUITextEntry::selectionStart() const {
    return toInt(_editor->edit.characterAt(_editor->edit.selectionStart()));
}

int KXUITextEntry::selectionLength() const {
    return toInt(_editor->edit.characterAt(_editor->edit.selectionEnd())) - selectionStart();
}

void KXUITextEntry::focus() {
    if (focusedEntry == this)
        return;
    if (focusedEntry)
        focusedEntry->unfocus();
    focusedEntry = this;
    offeringEntry = nullptr;
    takeHeldKeysAsReported();
    _editor->repeatingKey = 0;
    _editor->mouseHeld = _KXMouseButtonLeft;
    _editor->blinkTime = _KXLogicCurrentTime;
    _KXBeginTextInput();
}

void KXUITextEntry::unfocus() {
    if (focusedEntry != this)
        return;
    focusedEntry = offeringEntry = nullptr;
    _editor->compose({});
    _KXEndTextInput();
}

int KXUITextEntry::isFocused() const { return focusedEntry == this ? -1 : 0; }

int KXUITextEntry::poll() {
    _changed = _entered = 0;
    _takeOfferedFocus();
    _pollMouse();
    if (isFocused()) {
        if (_pollTyping())
            takeHeldKeysAsReported(); // they are the input method's
        else
            _pollKeys();
    }
    if (isFocused())
        _showInputMethodTheCursor();
    lastPolledEntry = this;
    return _changed || _entered ? -1 : 0;
}

int KXUITextEntry::changed() const { return _changed; }

int KXUITextEntry::entered() const { return _entered; }

void KXUITextEntry::_noteChange(bool changed) {
    if (changed)
        _changed = -1;
}

// When no other entry was polled in between, the offering one is the only one and starts over.
void KXUITextEntry::_takeOfferedFocus() {
    if (!offeringEntry)
        return;
    focus();
    offeringEntry = nullptr;
    selectAll();
}

void KXUITextEntry::_offerFocus(bool backwards) {
    if (!backwards) {
        offeringEntry = this;
    } else if (lastPolledEntry) {
        lastPolledEntry->focus();
        lastPolledEntry->selectAll();
    }
}

// With Control held the left button counts as the right one, so its press is none; one that is held stays
// held when Control comes and goes.
void KXUITextEntry::_pollMouse() {
    const bool held = _KXMouseButtonLeft, pressed = held && !_editor->mouseHeld && KXMouse(0);
    _editor->mouseHeld = held;
    _editor->dragging = _editor->dragging && held;
    if (pressed && mouseOver())
        _press();
    else if (pressed)
        unfocus();
    else if (_editor->dragging)
        _drag();
}

void KXUITextEntry::_press() {
    focus();
    _editor->compose({});
    _updateView();
    _KXTextEdit& edit = _editor->edit;
    const float x = static_cast<float>(KXMouseX) - _textLeft();
    const std::size_t nearest = _editor->view.positionNearest(x);
    _editor->dragging = true;
    _editor->pressPosition = _editor->view.positionUnder(x);
    switch (_editor->countClicks()) {
    case 1:
        edit.select(isShiftHeld() ? edit.anchor() : nearest, nearest);
        break;
    case 2:
        edit.selectWords(_editor->pressPosition, _editor->pressPosition);
        break;
    default:
        edit.selectAll();
    }
}

// A pointer that rests in the box changes nothing, even where the text has scrolled under it; one outside
// scrolls on, the faster the further away it is.
void KXUITextEntry::_drag() {
    const float x = static_cast<float>(KXMouseX) - _textLeft();
    if (KXMouseX == _editor->dragX && x >= 0 && x <= _textWidth())
        return;
    _editor->dragX = KXMouseX;
    _updateView();
    _KXTextEdit& edit = _editor->edit;
    if (_editor->clicks == 1)
        edit.select(edit.anchor(), _editor->view.positionNearest(x));
    else if (_editor->clicks == 2)
        edit.selectWords(_editor->pressPosition, _editor->view.positionUnder(x));
}

// Whether an input method is at work. The key that ends its composition is not the entry's either.
bool KXUITextEntry::_pollTyping() {
    const bool wasComposing = !_editor->composition.empty();
    _KXKeepTextInput();
    const std::string typed = _KXTakeTypedText();
    if (!typed.empty())
        _noteChange(_editor->edit.insert(typed.c_str()));
    _editor->compose(_KXComposedText());
    return wasComposing || !_editor->composition.empty();
}

void KXUITextEntry::_pollKeys() {
    using Step = _KXCursorStep;
    constexpr struct {
        Key key;
        Step step, wordStep;
        bool erases;
    } keys[] = {
        {keyLeft, Step::Left, Step::WordLeft, false},     {keyRight, Step::Right, Step::WordRight, false},
        {keyHome, Step::Start, Step::Start, false},       {keyEnd, Step::End, Step::End, false},
        {keyBackspace, Step::Left, Step::WordLeft, true}, {keyDelete, Step::Right, Step::WordRight, true}};
    for (const auto& row : keys) {
        if (!_editor->reports(row.key, true))
            continue;
        const Step step = isControlHeld() ? row.wordStep : row.step;
        if (row.erases)
            _noteChange(_editor->edit.erase(step));
        else
            _editor->edit.move(step, isShiftHeld());
    }
    _pollClipboardKeys();
    _pollFocusKeys();
}

// Every key is read, so that none counts later because Control comes down while it is held.
void KXUITextEntry::_pollClipboardKeys() {
    const bool all = _editor->reports(keyA), copy = _editor->reports(keyC), cut = _editor->reports(keyX),
               paste = _editor->reports(keyV);
    if (!isCommandHeld())
        return;
    _KXTextEdit& edit = _editor->edit;
    if (all)
        edit.selectAll();
    const bool copied =
        (copy || cut) && !_masked && edit.hasSelection() && _KXSetClipboardText(edit.selectedText());
    if (cut && copied)
        _noteChange(edit.erase(_KXCursorStep::Left));
    if (paste)
        _noteChange(edit.insert(_KXClipboardText().c_str()));
}

void KXUITextEntry::_pollFocusKeys() {
    const bool enter = _editor->reports(keyReturn), padEnter = _editor->reports(keyPadEnter),
               escape = _editor->reports(keyEscape), tab = _editor->reports(keyTab);
    if (isAltHeld())
        return; // the window's or the game's
    if (enter || padEnter)
        _entered = -1;
    if (escape)
        unfocus();
    else if (tab)
        _offerFocus(isShiftHeld());
}

// Input methods open their lists below it.
void KXUITextEntry::_showInputMethodTheCursor() {
    _updateView();
    const KXRect box = rect();
    const float x = _textLeft() + _editor->view.xOf(_editor->shown().cursor());
    _KXSetTextInputRect({{x, box.origin.y}, {1, box.size.height}});
}

float KXUITextEntry::_textLeft() const {
    const KXFont* const font = _fontInUse();
    return static_cast<float>(_KXTruncate(rect().origin.x)) + KXUIWidgetInnerPadding.width +
           (font ? font->renderingOffsetForSize(font->getSize()).x : 0);
}

// In a box of the height that fits a line of text, where its siblings have it; in others the line is centred.
float KXUITextEntry::_textTop() const {
    const float spare = rect().size.height - _idealSizeForText("").height;
    return static_cast<float>(_KXTruncate(rect().origin.y)) + static_cast<float>(_KXTruncate(spare / 2)) +
           KXUIWidgetInnerPadding.height;
}

float KXUITextEntry::_textWidth() const { return rect().size.width - 2 * KXUIWidgetInnerPadding.width; }

// What a stretch of the line covers, from and to given as distances from its left edge.
KXRect KXUITextEntry::_lineRect(float from, float to) const {
    return {{_textLeft() + std::floor(from), _textTop() - 1},
            {std::floor(to) - std::floor(from), std::ceil(_fontInUse()->ascender()) + 2}};
}

void KXUITextEntry::_updateView() {
    _editor->view.update(_editor->shown(), _fontInUse(), _textWidth(), _masked);
}

void KXUITextEntry::setSize(KXSize size) {
    if (size.height == -1 && _fontInUse())
        size.height = _idealSizeForText("").height;
    _KXUIWidget::setSize(size);
}

void KXUITextEntry::draw() {
    KX_GL_CHECK("KXUITextEntry::draw");
    KXDrawRectFill(rect(), _backgroundColor);
    if (_fontInUse())
        _drawText();
    KXDrawRect(rect(), isFocused() ? _focusColor : _borderColor);
}

void KXUITextEntry::_drawText() {
    const float margin = std::max(1.0f, KXUIWidgetInnerPadding.width - 1);
    const KXRect box = rect();
    const _KXClipScope clip(
        {{box.origin.x + margin, box.origin.y + 1}, {box.size.width - 2 * margin, box.size.height - 2}});
    _updateView();
    const _KXTextEdit& shown = _editor->shown();
    const _KXTextView& view = _editor->view;
    // Printing adds the font's offset, which the left edge of the line includes already.
    const KXPoint origin = {static_cast<float>(_KXTruncate(box.origin.x)) + KXUIWidgetInnerPadding.width,
                            _textTop()};
    if (shown.text().empty())
        _fontInUse()->print(origin, _placeholderColor, "%s", _editor->placeholder.c_str());
    if (isFocused() && shown.hasSelection())
        KXDrawRectFill(_lineRect(view.xOf(shown.selectionStart()), view.xOf(shown.selectionEnd())),
                       _selectionColor);
    view.draw(origin, _textColor);
    if (isFocused())
        _drawCursor();
}

// What is being composed is underlined; it lies before the cursor.
void KXUITextEntry::_drawCursor() {
    constexpr std::uint32_t halfPeriod = 500; // milliseconds
    const _KXTextEdit& shown = _editor->shown();
    const float x = _editor->view.xOf(shown.cursor());
    if (!_editor->composition.empty()) {
        KXRect line = _lineRect(_editor->view.xOf(_editor->edit.selectionStart()), x);
        line.origin.y += line.size.height - 1;
        line.size.height = 1;
        KXDrawRectFill(line, _textColor);
    }
    if (_editor->blinkRevision != shown.revision()) {
        _editor->blinkRevision = shown.revision();
        _editor->blinkTime = _KXLogicCurrentTime;
    }
    if ((_KXLogicCurrentTime - _editor->blinkTime) / halfPeriod % 2 == 0)
        KXDrawRectFill(_lineRect(x, x + 1), _textColor);
}

void KXUITextEntry::setBackgroundColor(KXColor color) { _backgroundColor = color; }
void KXUITextEntry::setBackgroundColor(float r, float g, float b, float a) {
    _backgroundColor = {r, g, b, a};
}

void KXUITextEntry::setBorderColor(KXColor color) { _borderColor = color; }
void KXUITextEntry::setBorderColor(float r, float g, float b, float a) { _borderColor = {r, g, b, a}; }

void KXUITextEntry::setFocusColor(KXColor color) { _focusColor = color; }
void KXUITextEntry::setFocusColor(float r, float g, float b, float a) { _focusColor = {r, g, b, a}; }

void KXUITextEntry::setTextColor(KXColor color) { _textColor = color; }
void KXUITextEntry::setTextColor(float r, float g, float b, float a) { _textColor = {r, g, b, a}; }

void KXUITextEntry::setPlaceholderColor(KXColor color) { _placeholderColor = color; }
void KXUITextEntry::setPlaceholderColor(float r, float g, float b, float a) {
    _placeholderColor = {r, g, b, a};
}

void KXUITextEntry::setSelectionColor(KXColor color) { _selectionColor = color; }
void KXUITextEntry::setSelectionColor(float r, float g, float b, float a) { _selectionColor = {r, g, b, a}; }
