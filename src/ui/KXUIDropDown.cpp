#include <Kobaltrix/KXUIDropDown.h>

#include "text/ColorEscapes.h"
#include "ui/Caption.h"
#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/KXUIListBox.h"
#include "ui/Look.h"
#include "ui/TargetSize.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cmath>

struct KXUIDropDown::State : _KXControl {
    explicit State(KXUIDropDown& box);

    KXUIListBox list; ///< Selected in it is the text that the user is at.
    int chosen = -1;
    bool isOpen = false;
    bool openedByPress = false; ///< One that is held yet.
    KXSize room;                ///< Of what it was drawn into last.
    std::unique_ptr<_KXCaption> caption;

    void open();
    void close();
    void choose();
    void place();
    bool isOverBox() { return widget.mouseOver() != 0; }

    void setColors(const KXUIColors& of);

protected:
    bool takesText() const override { return true; }
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardText(const char* text) override;
    void keyboardLost() override { close(); }
    void stepHeard() override;
    void leftOut() override { close(); }

private:
    void heardMouseInList(const KXInputEvent& event, const _KXModifiers& modifiers);
};

KXUIDropDown::State::State(KXUIDropDown& box) : _KXControl(box), room{0, 0} {
    list._state->whole = this;
    setColors(colors);
}

void KXUIDropDown::State::setColors(const KXUIColors& of) {
    colors = of;
    _KXColorList(list, of);
}

void KXUIDropDown::State::open() {
    if (list.count() == 0)
        return;
    list.setSelectedIndex(chosen);
    list._state->press = KXUIListBox::State::Press::Nothing;
    isOpen = true;
    place();
}

void KXUIDropDown::State::close() {
    isOpen = openedByPress = false;
    list.setSelectedIndex(chosen);
}

void KXUIDropDown::State::choose() {
    if (list.selectedIndex() != chosen) {
        chosen = list.selectedIndex();
        caption.reset();
        changed = true;
    }
    close();
}

// Below the box if all rows that are to be seen fit there, else where there is more room.
void KXUIDropDown::State::place() {
    constexpr int mostRows = 10, border = 2;
    const KXRect box = widget.rect();
    const int top = _KXWholePixel(box.origin.y), bottom = _KXWholePixel(box.origin.y + box.size.height),
              rowHeight = list._layout().rowHeight, rows = std::clamp(list.count(), 1, mostRows);
    const int end = room.height > 0 ? _KXWholePixel(room.height) : bottom + rows * rowHeight + border;
    const bool goesUp = end - bottom < rows * rowHeight + border && top > end - bottom;
    const int fitting = ((goesUp ? top : end - bottom) - border) / rowHeight;
    const int height = std::clamp(fitting, 1, rows) * rowHeight + border;
    list.setRect({box.origin.x, static_cast<float>(goesUp ? top - height : bottom)},
                 {box.size.width, static_cast<float>(height)});
}

void KXUIDropDown::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    const bool down = event.type == KXInputEventMouseDown && event.button <= KXMouseMiddle;
    if (isOpen)
        claimPointer(widget);
    if (isOpen && down && !list.mouseOver())
        return close(); // which is all that the press does here
    if (isOpen)
        return heardMouseInList(event, modifiers);
    _KXControl::heardMouse(event, modifiers);
    if (!down || event.button != KXMouseLeft || modifiers.control || !isOverBox())
        return;
    open();
    openedByPress = isOpen;
}

// Rows follow the pointer. A press that opened the list and goes on into it is one on its rows.
void KXUIDropDown::State::heardMouseInList(const KXInputEvent& event, const _KXModifiers& modifiers) {
    using Press = KXUIListBox::State::Press;
    Press& press = list._state->press;
    const bool isInRows = list.indexAt(KXMousePoint) != -1;
    if (event.type == KXInputEventMouseMoved && isInRows && openedByPress)
        press = Press::Rows;
    else if (event.type == KXInputEventMouseMoved && isInRows && !hasPointer())
        list.setSelectedIndex(list.indexAt(KXMousePoint));
    list._state->heardMouse(event, modifiers);
    if (event.type != KXInputEventMouseUp || event.button != KXMouseLeft || !hasPointer())
        return;
    if (isInRows && (press == Press::Row || press == Press::Rows))
        choose();
    else if (openedByPress && !isOverBox())
        close();
    openedByPress = false;
}

void KXUIDropDown::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    const bool first = key.type == KXInputEventKeyDown,
               opens = key.key == KXKeyReturn || key.key == KXKeyPadEnter || key.key == KXKeySpace ||
                       (modifiers.alt && (key.key == KXKeyUp || key.key == KXKeyDown));
    if (first && opens)
        return isOpen ? choose() : open();
    if (first && isOpen && key.key == KXKeyEscape)
        return close();
    if (opens || modifiers.alt)
        return;
    list._typeKey(key, {});
    if (!isOpen)
        choose();
}

void KXUIDropDown::State::heardText(const char* typed) {
    if (*typed == ' ')
        return; // the key has been heard
    list._findTyped(typed);
    if (!isOpen)
        choose();
}

void KXUIDropDown::State::stepHeard() {
    if (isOpen && list.count() == 0)
        close();
    if (isOpen) {
        place();
        list._passTime();
        if (!_KXIsElsewhere(windowID, KXMouseWindowID))
            claimPointer(widget);
    }
    list._told();
}

KXUIDropDown::KXUIDropDown() : _state(std::make_unique<State>(*this)) {}

KXUIDropDown::~KXUIDropDown() = default;

int KXUIDropDown::add(const char* text) { return _state->list.add(text); }

int KXUIDropDown::insert(int index, const char* text) {
    const int inserted = _state->list.insert(index, text);
    if (inserted != -1 && _state->chosen >= index)
        ++_state->chosen;
    return inserted;
}

int KXUIDropDown::remove(int index) {
    const int removed = _state->list.remove(index);
    if (removed && _state->chosen == index)
        setSelectedIndex(-1);
    else if (removed && _state->chosen > index)
        --_state->chosen;
    return removed;
}

void KXUIDropDown::clear() {
    _state->list.clear();
    setSelectedIndex(-1);
}

int KXUIDropDown::count() const { return _state->list.count(); }

const char* KXUIDropDown::text(int index) const { return _state->list.text(index); }

int KXUIDropDown::setSelectedIndex(int index) {
    if (!_state->list.setSelectedIndex(index))
        return 0;
    _state->chosen = index;
    _state->caption.reset();
    _state->isOpen = _state->isOpen && count() > 0;
    return -1;
}

int KXUIDropDown::selectedIndex() const { return _state->chosen; }

int KXUIDropDown::isOpen() const { return _state->isOpen ? -1 : 0; }

void KXUIDropDown::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }

int KXUIDropDown::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }

int KXUIDropDown::poll() {
    const _KXFocus::Turn turn(*this); // its list is a part of it
    return _state->poll();
}

void KXUIDropDown::setSize(KXSize size) {
    _noteAskedSize(size);
    const KXSize line = _idealSizeForText("");
    if (size.height == -1)
        size.height = line.height;
    if (size.width == -1) {
        float widest = 0;
        char visible[1024];
        for (const auto& row : _state->list._state->rows)
            if (const KXFont* const font = _fontInUse()) {
                _KXVisibleText(visible, sizeof visible, row.text.c_str());
                widest = std::max(widest, font->advance(visible));
            }
        size.width = std::ceil(widest) + line.width + line.height; // with a square for the arrow
    }
    _KXUIWidget::setSize(size);
}

int KXUIDropDown::setFont(const char* path, KXAliasMode mode) {
    _state->list.setFont(path, mode);
    const int result = _KXUIWidget::setFont(path, mode);
    refit();
    return result;
}

int KXUIDropDown::setFontSize(int size) {
    const int result = _KXUIWidget::setFontSize(size) ? _state->list.setFontSize(size) : 0;
    refit();
    return result;
}

void KXUIDropDown::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->list.setWindowID(id);
}

void KXUIDropDown::setColors(const KXUIColors& colors) { _state->setColors(colors); }

void KXUIDropDown::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    State& state = *_state;
    const KXRect box = rect();
    const float side = std::min(box.size.width, box.size.height);
    const unsigned states = state.states();
    _KXDrawPart(KXUIPartField, box, states, state.colors);
    if (!state.caption)
        state.caption = std::make_unique<_KXCaption>(
            state.chosen == -1 ? "" : state.list._state->rows[static_cast<std::size_t>(state.chosen)].text);
    const KXColor text = _KXPartText(KXUIPartField, states, state.colors);
    state.caption->drawLineLaidOut(_fontInUse(), {box.origin, {box.size.width - side, box.size.height}},
                                   KXUIWidgetInnerPadding.width, text, KXTextAlignLeft);
    _KXDrawArrow({{box.origin.x + box.size.width - side, box.origin.y}, {side, side}}, KXDirectionDown, text);
    state.drawRing();
    state.room = _KXTargetSize();
    if (!_panel())
        drawPopup();
}

int KXUIDropDown::hasPopup() const { return isOpen(); }

void KXUIDropDown::drawPopup() {
    if (!_state->isOpen)
        return;
    _state->place();
    _state->list.draw();
}

int KXUIDropDown::pollInPanel() { return poll(); }

_KXFocus* KXUIDropDown::keyboardPart() { return _state.get(); }

KXUIDescription KXUIDropDown::description() const {
    KXUIDescription said = _described("drop-down", nullptr);
    if (const char* const chosen = text(selectedIndex()))
        said.value = _KXSpokenText(chosen);
    if (isOpen())
        _KXAddState(said, "open");
    return said;
}
