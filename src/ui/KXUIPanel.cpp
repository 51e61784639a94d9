#include "ui/KXUIPanel.h"

#include "render/ClipScope.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXUILabel.h>
#include <Kobaltrix/KXUILayout.h>

#include <algorithm>
#include <utility>

static KXUIPanel& rootOf(KXUIPanel& panel) {
    KXUIPanel* root = &panel;
    while (root->_panel())
        root = root->_panel();
    return *root;
}

static _KXFocus* focusOf(const _KXUIWidget& widget) {
    const _KXPanelChild* const child = widget._panel() ? widget._panel()->_own().childOf(widget) : nullptr;
    return child ? child->focus() : nullptr;
}

static bool canHaveKeyboard(const _KXUIWidget& widget) {
    for (const KXUIPanel* panel = widget._panel(); panel; panel = panel->_panel())
        if (!panel->_takesInput())
            return false;
    return widget._takesInput() && widget.takesKeyboard() && focusOf(widget);
}

static void takeKeyboardTo(_KXUIWidget& widget) {
    focusOf(widget)->takeKeyboardByKey();
    for (KXUIPanel* panel = widget._panel(); panel; panel = panel->_panel())
        panel->reveal(widget.focusRect());
}

/// Takes the keyboard to the stop behind the one that has it, or before it; from none to the first or last.
static void passKeyboardOn(KXUIPanel& root, bool back) {
    std::vector<_KXUIWidget*> stops;
    root._takeStops(stops);
    if (stops.empty())
        return;
    if (back)
        std::reverse(stops.begin(), stops.end());
    const auto present = std::find_if(stops.begin(), stops.end(),
                                      [](_KXUIWidget* stop) { return focusOf(*stop)->hasKeyboard(); });
    const auto next = present == stops.end() || present + 1 == stops.end() ? stops.begin() : present + 1;
    takeKeyboardTo(**next);
}

static KXUIKey keyOf(const KXInputEvent& event, const _KXModifiers& modifiers) {
    return {event.key,       event.type == KXInputEventKeyRepeat,
            modifiers.shift, modifiers.control,
            modifiers.alt,   modifiers.command};
}

static bool isReturn(const KXInputEvent& event) {
    return event.key == KXKeyReturn || event.key == KXKeyPadEnter;
}

static KXUIMouse mouseOf(const KXInputEvent& event, const _KXModifiers& modifiers) {
    return {event.type,      event.button,      KXMousePoint,  event.motion,
            modifiers.shift, modifiers.control, modifiers.alt, modifiers.command};
}

/// Whether an event of the mouse is to be handed to the widget. What is pressed on it stays its own.
bool _KXPanelStop::isForWidget(const KXInputEvent& event) {
    if (!widget._takesInput())
        return pressed = 0, false;
    const unsigned bit = event.button >= 0 && event.button < 32 ? 1U << event.button : 0;
    if (event.type == KXInputEventMouseUp)
        return std::exchange(pressed, pressed & ~bit) & bit;
    const bool isOnTop = widget.mouseOver() && parts.topAt(KXMousePoint) == &widget;
    if (event.type == KXInputEventMouseDown && isOnTop)
        pressed |= bit;
    return isOnTop || (pressed && event.type != KXInputEventMouseWheel);
}

void _KXPanelStop::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (isRemoved) // by what came before
        return;
    const std::shared_ptr<_KXUIPanelParts> kept = parts.panel->_shared(); // it may end the panel
    heardClick(event, modifiers);
    if (isForWidget(event))
        widget.handleMouse(mouseOf(event, modifiers));
}

// A press that ends within its step was never there for those who ask once a step.
void _KXPanelStop::heardClick(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (event.button != KXMouseLeft || modifiers.control || !widget.mouseOver())
        return;
    const std::uint64_t now = std::uint64_t{_KXStep().step} + 1;
    if (event.type == KXInputEventMouseDown) {
        pressStep = now;
        if (widget.takesKeyboard())
            takeKeyboard();
    } else if (event.type == KXInputEventMouseUp && pressStep == now) {
        pressStep = 0;
        widget.click(KXMouseLeft);
    }
}

void _KXPanelStop::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    const std::shared_ptr<_KXUIPanelParts> kept = parts.panel->_shared(); // the key may end the panel
    if (!widget.handleKey(keyOf(key, modifiers)) && key.type == KXInputEventKeyDown && isReturn(key))
        kept->clickByReturn();
}

const _KXPanelChild* _KXUIPanelParts::childOf(const _KXUIWidget& widget) const {
    const auto child = std::find_if(children.begin(), children.end(),
                                    [&](const _KXPanelChild& each) { return each.widget == &widget; });
    return child == children.end() ? nullptr : &*child;
}

/// What is open lies above all, then comes what was added last.
_KXUIWidget* _KXUIPanelParts::topAt(KXPoint point) const {
    for (auto child = children.rbegin(); child != children.rend(); ++child)
        if (child->widget->hasPopup())
            return child->widget;
    const KXRect* const seen = view();
    const bool isInView = !seen || _KXContains(*seen, point);
    for (const bool fixed : {true, false})
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            if (child->isFixed == fixed && (fixed || isInView) && child->widget->isVisible() &&
                child->widget->containsPoint(point))
                return child->widget;
    return (hasBackground || seen) && panel->_KXUIWidget::containsPoint(point) ? panel : nullptr;
}

const KXRect* _KXUIPanelParts::viewOf(const _KXPanelChild& child) const {
    return child.isFixed || child.widget == holder || child.widget->hasPopup() ? nullptr : view();
}

void _KXUIPanelParts::heardMouse(const KXInputEvent& event, const _KXModifiers&) {
    if (event.type != KXInputEventMouseDown && event.type != KXInputEventMouseWheel)
        return;
    _KXUIWidget* const top = topAt(KXMousePoint);
    if (event.type == KXInputEventMouseDown)
        holder = top;
    if (!top)
        return;
    claimPointer(*top);
    if (event.type == KXInputEventMouseWheel && (top == panel || (!top->takesWheel() && !top->hasPopup())))
        heardFreeWheel(event);
    if (top == panel)
        return;
    const _KXPanelChild* const child = childOf(*top);
    const Turn turn(*top, child ? viewOf(*child) : nullptr);
    if (auto* const inner = dynamic_cast<KXUIPanel*>(top))
        inner->_own().hearSoFar();
    else if (_KXFocus* const focus = focusOf(*top))
        focus->hearSoFar(); // before those that are polled earlier hear of what comes next
}

/// While a button is held the pointer is with the one that it was pressed on.
void _KXUIPanelParts::claimRestingPointer() {
    if (_KXIsElsewhere(windowID, KXMouseWindowID))
        return;
    const bool held = KXMouse(KXMouseLeft) || KXMouse(KXMouseRight) || KXMouse(KXMouseMiddle);
    if (!held)
        holder = nullptr;
    if (_KXUIWidget* const top = holder ? holder : topAt(KXMousePoint))
        claimPointer(*top);
}

/// In place of a poll, while the user does not work the panel.
void _KXUIPanelParts::leaveOutWidgets() {
    leaveOut();
    holder = nullptr;
    for (const _KXPanelChild& child : children) {
        child.widget->_setActivated(0);
        child.widget->_letGo(KXMouseLeft);
        if (auto* const inner = dynamic_cast<KXUIPanel*>(child.widget))
            inner->_own().leaveOutWidgets();
        else if (_KXFocus* const focus = child.focus())
            focus->leaveOut();
    }
}

void _KXUIPanelParts::place() {
    if (std::exchange(themeRevision, _KXThemeRevision) != _KXThemeRevision)
        panel->refit();
    placeLayout();
}

void _KXUIPanelParts::placeLayout() {
    if (layout)
        layout->setRect(panel->rect().origin, panel->rect().size);
}

/// Whether a key that is on its way to a widget is the panel's.
bool _KXUIPanelParts::keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    const _KXFocus* const owner = keyboardOwner();
    const auto child = std::find_if(children.begin(), children.end(),
                                    [&](const _KXPanelChild& each) { return each.focus() == owner; });
    if (child == children.end() || child->widget->hasPopup())
        return false;
    if (key.key == KXKeyTab && !modifiers.alt && !modifiers.command && owner->keepsTab == modifiers.control)
        return passKeyboardOn(rootOf(*panel), modifiers.shift), true;
    if (modifiers.alt && !modifiers.control && rootOf(*panel)._own().usesMnemonic(key.key))
        return true;
    if (key.key == KXKeyEscape && clickByEscape())
        return true;
    if (isReturn(key) && owner->leavesReturn && !modifiers.alt)
        clickByReturn();
    return false;
}

void _KXUIPanelParts::heardKeyOfNobody(const KXInputEvent& key, const _KXModifiers& modifiers) {
    if (panel->_panel() || inputMethodIsAtWork() || panel->hasPopup()) // those who hold this one hear it, too
        return;
    if (key.key == KXKeyTab && !modifiers.alt && !modifiers.control && !modifiers.command)
        passKeyboardOn(*panel, modifiers.shift);
    else if (modifiers.alt && !modifiers.control)
        usesMnemonic(key.key);
    else if (key.key == KXKeyEscape)
        clickByEscape();
    else if (isReturn(key) && !modifiers.alt)
        clickByReturn();
}

bool _KXUIPanelParts::usesMnemonic(int key) {
    for (const _KXPanelMnemonic& mnemonic : mnemonics) {
        const auto* const label = dynamic_cast<const KXUILabel*>(mnemonic.widget);
        _KXUIWidget* const widget = label ? label->widget() : mnemonic.widget;
        if (mnemonic.key != key || !widget || !widget->_takesInput())
            continue;
        if (canHaveKeyboard(*widget))
            takeKeyboardTo(*widget);
        if (!widget->keyboardPart())
            widget->click(KXMouseLeft);
        return true;
    }
    return std::any_of(children.begin(), children.end(), [key](const _KXPanelChild& child) {
        auto* const inner = dynamic_cast<KXUIPanel*>(child.widget);
        return inner && inner->_takesInput() && inner->_own().usesMnemonic(key);
    });
}

static bool clickFrom(KXUIPanel* panel, _KXUIWidget* _KXUIPanelParts::*button) {
    for (; panel; panel = panel->_panel())
        if (_KXUIWidget* const widget = panel->_own().*button) {
            widget->click(KXMouseLeft);
            return true;
        }
    return false;
}

bool _KXUIPanelParts::clickByReturn() { return clickFrom(panel, &_KXUIPanelParts::defaultButton); }
bool _KXUIPanelParts::clickByEscape() { return clickFrom(panel, &_KXUIPanelParts::cancelButton); }

KXUIPanel::KXUIPanel() : _parts(std::make_shared<_KXUIPanelParts>(*this)) {}
KXUIPanel::KXUIPanel(std::shared_ptr<_KXUIPanelParts> (*makeParts)(KXUIPanel&)) : _parts(makeParts(*this)) {}

KXUIPanel::~KXUIPanel() {
    while (!_parts->children.empty())
        remove(*_parts->children.back().widget);
    _parts->panel = nullptr;
}

_KXUIPanelParts& KXUIPanel::_own() const { return *_parts; }
std::shared_ptr<_KXUIPanelParts> KXUIPanel::_shared() const { return _parts; }

void KXUIPanel::add(_KXUIWidget& widget) {
    for (const KXUIPanel* above = this; above; above = above->_panel())
        if (above == &widget)
            return;
    auto stop = widget.keyboardPart() || dynamic_cast<KXUIPanel*>(&widget)
                    ? nullptr
                    : std::make_unique<_KXPanelStop>(*_parts, widget);
    _parts->children.reserve(_parts->children.size() + 1);
    _parts->removed.reserve(_parts->removed.size() + _parts->children.size() + 1);
    if (KXUIPanel* const before = widget._panel())
        before->remove(widget);
    _parts->children.push_back({&widget, std::move(stop)});
    widget._setPanel(this);
    if (windowID())
        widget.setWindowID(windowID());
    if (_KXFocus* const focus = _parts->children.back().focus()) {
        focus->filter = _parts.get();
        focus->windowID = widget.windowID();
    }
}

/// One that lies above the others and does not scroll with them.
void KXUIPanel::_addFixed(_KXUIWidget& widget) {
    add(widget);
    _parts->children.back().isFixed = true;
}

// It gives up the keyboard last: what it hears then may do anything, also end the widget or the panel.
void KXUIPanel::remove(_KXUIWidget& widget) {
    const std::shared_ptr<_KXUIPanelParts> parts = _parts;
    const auto child = std::find_if(parts->children.begin(), parts->children.end(),
                                    [&](const _KXPanelChild& each) { return each.widget == &widget; });
    if (child == parts->children.end())
        return;
    _KXFocus* const focus = child->focus();
    if (child->stop) {
        child->stop->isRemoved = true;
        parts->removed.push_back(std::move(child->stop));
    }
    parts->children.erase(child);
    for (_KXUIWidget** each : {&parts->defaultButton, &parts->cancelButton, &parts->holder})
        if (*each == &widget)
            *each = nullptr;
    std::erase_if(parts->mnemonics, [&](const _KXPanelMnemonic& each) { return each.widget == &widget; });
    widget._setPanel(nullptr);
    widget._setMnemonic(0);
    if (focus) {
        focus->filter = nullptr;
        focus->giveUpKeyboard();
    }
}

int KXUIPanel::count() const { return static_cast<int>(_parts->children.size()); }

_KXUIWidget* KXUIPanel::widget(int index) const {
    return index >= 0 && index < count() ? _parts->children[static_cast<std::size_t>(index)].widget : nullptr;
}

void KXUIPanel::setLayout(KXUILayout* layout) {
    _parts->layout = layout;
    _parts->place();
}

void KXUIPanel::setHasBackground(int has) { _parts->hasBackground = has; }
void KXUIPanel::setColors(const KXUIColors& colors) { _parts->colors = colors; }
void KXUIPanel::setDefaultButton(_KXUIWidget* widget) { _parts->defaultButton = widget; }
void KXUIPanel::setCancelButton(_KXUIWidget* widget) { _parts->cancelButton = widget; }

void KXUIPanel::setMnemonic(_KXUIWidget& widget, int key) {
    std::erase_if(_parts->mnemonics, [&](const _KXPanelMnemonic& each) { return each.widget == &widget; });
    if (widget._panel() != this)
        return;
    if (key)
        _parts->mnemonics.push_back({key, &widget});
    widget._setMnemonic(key);
}

int KXUIPanel::focus(_KXUIWidget& widget) {
    const KXUIPanel* above = widget._panel();
    while (above && above != this)
        above = above->_panel();
    if (!above || !canHaveKeyboard(widget))
        return 0;
    takeKeyboardTo(widget);
    return -1;
}

_KXUIWidget* KXUIPanel::focused() const {
    for (const _KXPanelChild& child : _parts->children) {
        if (const auto* const inner = dynamic_cast<const KXUIPanel*>(child.widget)) {
            if (_KXUIWidget* const within = inner->focused())
                return within;
        } else if (const _KXFocus* const focus = child.focus(); focus && focus->hasKeyboard()) {
            return child.widget;
        }
    }
    return nullptr;
}

void KXUIPanel::_takeStops(std::vector<_KXUIWidget*>& stops) const {
    if (!_takesInput())
        return;
    for (const _KXPanelChild& child : _parts->children)
        if (const auto* const inner = dynamic_cast<const KXUIPanel*>(child.widget))
            inner->_takeStops(stops);
        else if (canHaveKeyboard(*child.widget))
            stops.push_back(child.widget);
}

namespace {
class Count {
public:
    explicit Count(int& count) : _count(++count) {}
    ~Count() { --_count; }
    Count(const Count&) = delete;
    Count& operator=(const Count&) = delete;

private:
    int& _count;
};
} // namespace

// What is polled may take widgets out, itself too, and end the panel.
int KXUIPanel::poll() {
    const std::shared_ptr<_KXUIPanelParts> parts = _parts;
    if (!_takesInput())
        return parts->leaveOutWidgets(), 0;
    if (parts->polls == 0)
        parts->removed.clear();
    const Count count(parts->polls);
    parts->place();
    parts->hear();
    if (parts->panel)
        parts->claimRestingPointer();
    int acted = 0;
    for (std::size_t i = 0; i < parts->children.size();) {
        _KXUIWidget& widget = *parts->children[i].widget;
        const _KXFocus::Turn turn(widget, parts->viewOf(parts->children[i]));
        if (_KXPanelStop* const stop = parts->children[i].stop.get()) {
            if (!widget._takesInput())
                stop->leaveOut();
            stop->hear();
        }
        const auto isThere = [&] {
            return i < parts->children.size() && parts->children[i].widget == &widget;
        };
        if (!isThere())
            continue;
        const int result = widget.pollInPanel();
        if (!isThere())
            continue;
        widget._setActivated(result);
        acted |= result;
        ++i;
    }
    return acted ? -1 : 0;
}

void KXUIPanel::_drawWidgets(bool fixed) {
    for (const _KXPanelChild& child : _parts->children) {
        if (child.isFixed != fixed)
            continue;
        const _KXFocus::Turn turn(*child.widget, _parts->viewOf(child));
        child.widget->draw();
        if (child.stop && child.stop->hasKeyboard() && child.stop->arrivedByKeyboard)
            _KXDrawFocusRing(child.widget->focusRect(), _parts->viewOf(child), _parts->colors);
    }
}

void KXUIPanel::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    _parts->place();
    if (_parts->hasBackground)
        _KXDrawPart(KXUIPartPanel, rect(), KXUIPartNormal, _parts->colors);
    if (const KXRect* const view = _parts->view()) {
        const _KXClipScope clip(*view);
        _drawWidgets(false);
    } else {
        _drawWidgets(false);
    }
    _drawWidgets(true);
    if (!_panel())
        drawPopup();
}

void KXUIPanel::drawPopup() {
    for (const _KXPanelChild& child : _parts->children)
        if (child.widget->isVisible() && child.widget->hasPopup()) {
            const _KXFocus::Turn turn(*child.widget);
            child.widget->drawPopup();
        }
}

static void describe(const std::vector<_KXPanelChild>& children, std::vector<KXUIDescription>& all) {
    for (const _KXPanelChild& child : children) {
        if (!child.widget->isVisible())
            continue;
        all.push_back(child.widget->description());
        if (const auto* const inner = dynamic_cast<const KXUIPanel*>(child.widget))
            describe(inner->_own().children, all);
    }
}

std::vector<KXUIDescription> KXUIPanel::descriptions() const {
    std::vector<KXUIDescription> all;
    describe(_parts->children, all);
    return all;
}

void KXUIPanel::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _parts->windowID = id;
    for (const _KXPanelChild& child : _parts->children) {
        child.widget->setWindowID(id);
        if (child.stop)
            child.stop->windowID = id;
    }
}

int KXUIPanel::pollInPanel() { return poll(); }
int KXUIPanel::takesKeyboard() const { return 0; }
int KXUIPanel::containsPoint(KXPoint point) const { return _parts->topAt(point) ? -1 : 0; }

int KXUIPanel::takesWheel() const {
    const _KXUIWidget* const top = _parts->topAt(KXMousePoint);
    return top && top != this && top->takesWheel() ? -1 : 0;
}

int KXUIPanel::hasPopup() const {
    return std::any_of(_parts->children.begin(), _parts->children.end(),
                       [](const _KXPanelChild& child) {
                           return child.widget->isVisible() && child.widget->hasPopup();
                       })
               ? -1
               : 0;
}

void KXUIPanel::refit() {
    for (const _KXPanelChild& child : _parts->children)
        child.widget->refit();
}

void KXUIPanel::reveal(KXRect) {}

KXUIDescription KXUIPanel::description() const { return _described("panel", nullptr); }
