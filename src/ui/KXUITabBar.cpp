#include "ui/KXUITabBar.h"

#include "render/ClipScope.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/Shortcuts.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <utility>

namespace {
constexpr float widestTitle = 200, besideTitle = 8, markSide = 8;
constexpr float pixelsPerNotch = 40, pixelsPerStepOfDrag = 6, dragBegins = 4;

} // namespace

void KXUITabBar::State::tabsChanged() { edges.clear(); }

// Titles that are new are measured, and all of them with another font.
void KXUITabBar::State::measure() {
    const KXFont* const font = bar._fontInUse();
    const unsigned revision = font ? font->_currentRevision() : 0;
    if (std::exchange(fontRevision, revision) != revision) {
        for (Tab& tab : tabs)
            tab.width = -1;
        edges.clear();
    }
    if (!edges.empty())
        return;
    std::vector<float> measured = {0};
    measured.reserve(tabs.size() + 1);
    for (Tab& tab : tabs) {
        if (tab.width < 0)
            tab.width = font ? std::min(widestTitle, _KXCaption::widthOf(*font, tab.title.text())) : 0;
        measured.push_back(measured.back() + tab.width + 2 * besideTitle +
                           (isClosable ? markSide + besideTitle : 0));
    }
    edges = std::move(measured);
}

float KXUITabBar::State::arrowWidth() const { return std::clamp(bar.rect().size.height, 8.0f, 20.0f); }

KXUITabBar::State::View KXUITabBar::State::view() {
    measure();
    const auto [origin, size] = bar.rect();
    View view = {origin.x, origin.x + size.width, edges.back(), false};
    view.scrolls = view.all > view.width() && view.width() > 3 * arrowWidth();
    if (view.scrolls) {
        view.left += arrowWidth();
        view.right -= arrowWidth();
    }
    if (revealsChosen && chosen != -1 && view.width() > 0) {
        const auto tab = static_cast<std::size_t>(chosen);
        scrolled = std::min(std::max(scrolled, edges[tab + 1] - view.width()), edges[tab]);
        revealsChosen = false;
    }
    const float furthest = view.scrolls ? view.all - view.width() : 0;
    scrolled = scrolled > 0 ? std::floor(std::min(scrolled, furthest)) : 0;
    return view;
}

KXRect KXUITabBar::State::tabRect(const View& view, int index) const {
    const auto tab = static_cast<std::size_t>(index);
    const auto [origin, size] = bar.rect();
    return {{view.left + edges[tab] - scrolled, origin.y}, {edges[tab + 1] - edges[tab], size.height}};
}

KXRect KXUITabBar::State::markRect(const View& view, int index) const {
    const auto [origin, size] = tabRect(view, index);
    return {
        {origin.x + size.width - besideTitle - markSide, std::floor(origin.y + (size.height - markSide) / 2)},
        {markSide, markSide}};
}

KXRect KXUITabBar::State::arrowRect(bool left) const {
    const auto [origin, size] = bar.rect();
    return {{left ? origin.x : origin.x + size.width - arrowWidth(), origin.y}, {arrowWidth(), size.height}};
}

// -1 for none.
int KXUITabBar::State::tabUnder(const View& view) const {
    if (!(KXMousePoint.x >= view.left && KXMousePoint.x < view.right))
        return -1;
    const auto behind = std::ranges::upper_bound(edges, KXMousePoint.x - view.left + scrolled);
    const auto index = static_cast<int>(behind - edges.begin()) - 1;
    return index < bar.count() ? index : -1;
}

// Where a dragged title goes: before the first one whose middle is right of the pointer.
int KXUITabBar::State::dropIndex(const View& view) const {
    const float x = std::max(view.left, std::min(KXMousePoint.x, view.right)) - view.left + scrolled;
    const auto behind = std::ranges::upper_bound(edges, x);
    auto index = static_cast<int>(behind - edges.begin()) - 1;
    if (index < bar.count() && x >= (edges[static_cast<std::size_t>(index)] + *behind) / 2)
        ++index;
    return std::min(index, bar.count());
}

bool KXUITabBar::State::isOverMark(const View& view, int index) const {
    constexpr float easier = 3; // to hit
    auto [origin, size] = markRect(view, index);
    return isClosable && tabUnder(view) == index &&
           _KXCovers(
               {{origin.x - easier, origin.y - easier}, {size.width + 2 * easier, size.height + 2 * easier}},
               KXMousePoint);
}

void KXUITabBar::State::choose(int index) {
    if (index < 0 || index >= bar.count())
        return;
    changed |= index != chosen;
    bar.setSelectedIndex(index);
}

void KXUITabBar::State::close(int index) {
    closedNow = index;
    changed = true;
}

/// One at a time is told of.
void KXUITabBar::State::move(int from, int to) {
    if (to < 0 || to >= bar.count() || to == from || fromNow != -1)
        return;
    const auto at = [this](int index) { return tabs.begin() + index; };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
    if (chosen == from)
        chosen = to;
    else if (from < chosen && chosen <= to)
        --chosen;
    else if (to <= chosen && chosen < from)
        ++chosen;
    fromNow = from;
    toNow = to;
    revealsChosen = changed = true;
    tabsChanged();
}

void KXUITabBar::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    _KXControl::heardMouse(event, modifiers);
    if (event.type != KXInputEventMouseDown || event.button != KXMouseMiddle || !isClosable ||
        !bar.mouseOver())
        return;
    if (const int under = tabUnder(view()); under != -1)
        close(under);
}

void KXUITabBar::State::pressed(const _KXModifiers&) {
    const View seen = view();
    press = Press::Nothing;
    pressedTab = tabUnder(seen);
    pressX = KXMousePoint.x;
    if (pressedTab != -1) {
        press = isOverMark(seen, pressedTab) ? Press::Mark : Press::Title;
        if (press == Press::Title)
            choose(pressedTab);
    } else if (seen.scrolls && (KXMousePoint.x < seen.left || KXMousePoint.x >= seen.right)) {
        press = Press::Arrow;
        arrow = KXMousePoint.x < seen.left ? -1 : 1;
        scrolled += static_cast<float>(arrow) * pixelsPerNotch;
        repeats.begin();
    }
}

void KXUITabBar::State::dragged() {
    if (press == Press::Title && isReorderable && std::abs(KXMousePoint.x - pressX) >= dragBegins)
        press = Press::Dragged;
}

void KXUITabBar::State::released() {
    const View seen = view();
    const Press ended = std::exchange(press, Press::Nothing);
    if (pressedTab >= bar.count())
        return; // the game has taken it away meanwhile
    if (ended == Press::Mark && isOverMark(seen, pressedTab))
        close(pressedTab);
    else if (ended == Press::Dragged) {
        const int before = dropIndex(seen);
        move(pressedTab, before > pressedTab ? before - 1 : before);
    }
}

void KXUITabBar::State::wheelTurned(float notches) {
    constexpr float most = 1000; // no number becomes none
    scrolled -= notches >= -most && notches <= most ? notches * pixelsPerNotch : 0;
    view();
}

void KXUITabBar::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    const bool first = key.type == KXInputEventKeyDown;
    const int step = key.key == KXKeyLeft ? -1 : key.key == KXKeyRight ? 1 : 0;
    if (modifiers.alt || chosen == -1)
        return;
    if (step && _KXIsShortcut(modifiers))
        return isReorderable ? move(chosen, chosen + step) : void();
    if (step)
        choose(chosen + step);
    else if (key.key == KXKeyHome)
        choose(0);
    else if (key.key == KXKeyEnd)
        choose(bar.count() - 1);
    else if (key.key == KXKeyDelete && first && isClosable)
        close(chosen);
}

void KXUITabBar::State::stepHeard() {
    const View seen = view();
    if (press == Press::Arrow && hasPointer()) {
        for (int times = repeats.due(); times > 0; --times)
            scrolled += static_cast<float>(arrow) * pixelsPerNotch;
    } else if (press == Press::Dragged && hasPointer()) {
        if (KXMousePoint.x < seen.left)
            scrolled -= pixelsPerStepOfDrag;
        else if (KXMousePoint.x >= seen.right)
            scrolled += pixelsPerStepOfDrag;
    } else if (!hasPointer()) {
        press = Press::Nothing;
    }
    closed = std::exchange(closedNow, -1);
    movedFrom = std::exchange(fromNow, -1);
    movedTo = std::exchange(toNow, -1);
}

KXUITabBar::KXUITabBar() : _state(std::make_unique<State>(*this)) {}

KXUITabBar::~KXUITabBar() = default;

int KXUITabBar::add(const char* title) { return insert(count(), title); }

int KXUITabBar::insert(int index, const char* title) {
    if (!title || index < 0 || index > count() || count() == INT_MAX)
        return -1;
    State& state = *_state;
    state.tabs.insert(state.tabs.begin() + index, State::Tab{_KXCaption(title), -1});
    state.tabsChanged();
    if (state.chosen >= index || state.chosen == -1)
        ++state.chosen;
    return index;
}

int KXUITabBar::remove(int index) {
    if (index < 0 || index >= count())
        return 0;
    State& state = *_state;
    state.tabs.erase(state.tabs.begin() + index);
    state.tabsChanged();
    if (state.chosen > index)
        --state.chosen;
    state.chosen = std::min(state.chosen, count() - 1);
    state.press = State::Press::Nothing; // numbers mean other titles now
    state.revealsChosen = true;
    return -1;
}

void KXUITabBar::clear() {
    _state->tabs.clear();
    _state->tabsChanged();
    _state->chosen = -1;
    _state->press = State::Press::Nothing;
}

int KXUITabBar::count() const { return static_cast<int>(_state->tabs.size()); }

int KXUITabBar::setTitle(int index, const char* title) {
    if (!title || index < 0 || index >= count())
        return 0;
    _state->tabs[static_cast<std::size_t>(index)] = State::Tab{_KXCaption(title), -1};
    _state->tabsChanged();
    return -1;
}

const char* KXUITabBar::title(int index) const {
    return index >= 0 && index < count() ? _state->tabs[static_cast<std::size_t>(index)].title.text()
                                         : nullptr;
}

int KXUITabBar::setSelectedIndex(int index) {
    if (index < 0 || index >= count())
        return 0;
    _state->chosen = index;
    _state->revealsChosen = true;
    return -1;
}

int KXUITabBar::selectedIndex() const { return _state->chosen; }

void KXUITabBar::setClosable(int closable) {
    _state->isClosable = closable;
    _state->tabsChanged();
}

int KXUITabBar::closedIndex() const { return _state->closed; }
void KXUITabBar::setReorderable(int reorderable) { _state->isReorderable = reorderable; }
int KXUITabBar::movedFrom() const { return _state->movedFrom; }
int KXUITabBar::movedTo() const { return _state->movedTo; }

void KXUITabBar::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }

int KXUITabBar::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }

int KXUITabBar::poll() { return _state->poll(); }

void KXUITabBar::setSize(KXSize size) {
    _noteAskedSize(size);
    constexpr float aroundTitle = 4;
    if (size.width == -1) {
        _state->measure();
        size.width = _state->edges.back();
    }
    if (size.height == -1)
        size.height = _idealSizeForText("").height + aroundTitle;
    _KXUIWidget::setSize(size);
}

void KXUITabBar::setColors(const KXUIColors& colors) { _state->colors = colors; }

// The chosen one has a strip along its top.
void KXUITabBar::State::drawTab(const View& seen, int index) {
    constexpr float strip = 3;
    const bool isChosen = index == chosen;
    const KXUIPart part = isChosen ? KXUIPartButton : KXUIPartHeader;
    const KXRect all = tabRect(seen, index);
    const unsigned hovered = bar.mouseOver() && tabUnder(seen) == index ? KXUIPartHovered : KXUIPartNormal;
    _KXDrawPart(part, all, hovered, colors);
    if (isChosen)
        _KXDrawPart(KXUIPartSelection, {all.origin, {all.size.width, strip}}, KXUIPartNormal, colors);
    const KXColor text = _KXPartText(part, hovered, colors);
    const float mark = isClosable ? markSide + besideTitle : 0;
    tabs[static_cast<std::size_t>(index)].title.drawLineLaidOut(
        bar._fontInUse(), {all.origin, {all.size.width - mark, all.size.height}}, besideTitle, text,
        KXTextAlignCentre);
    if (!isClosable)
        return;
    const auto [origin, size] = markRect(seen, index);
    const float right = origin.x + size.width, bottom = origin.y + size.height;
    KXDrawLine(origin, {right, bottom}, text);
    KXDrawLine({origin.x, bottom - 1}, {right, origin.y - 1}, text);
}

void KXUITabBar::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    State& state = *_state;
    const State::View seen = state.view();
    const auto [origin, size] = rect();
    if (count() > 0 && seen.width() > 0) {
        const _KXClipScope clip({{seen.left, origin.y}, {seen.width(), size.height}});
        const auto first = std::ranges::upper_bound(state.edges, state.scrolled) - state.edges.begin() - 1;
        for (int tab = static_cast<int>(first); tab < count(); ++tab) {
            if (state.edges[static_cast<std::size_t>(tab)] - state.scrolled >= seen.width())
                break;
            state.drawTab(seen, tab);
        }
        if (state.press == State::Press::Dragged) {
            constexpr float width = 3;
            const float edge = state.edges[static_cast<std::size_t>(state.dropIndex(seen))] - state.scrolled;
            const float x = std::max(seen.left, std::min(seen.left + edge - 1, seen.right - width));
            _KXDrawPart(KXUIPartSelection, {{std::floor(x), origin.y}, {width, size.height}}, KXUIPartNormal,
                        state.colors);
        }
    }
    for (const bool left : {true, false})
        if (seen.scrolls) {
            const bool isHeld = state.press == State::Press::Arrow && state.arrow == (left ? -1 : 1);
            const unsigned states = isHeld ? KXUIPartPressed : KXUIPartNormal;
            _KXDrawPart(KXUIPartButton, state.arrowRect(left), states, state.colors);
            _KXDrawArrow(state.arrowRect(left), left ? KXDirectionLeft : KXDirectionRight,
                         _KXPartText(KXUIPartButton, states, state.colors));
        }
    state.drawRing();
}

int KXUITabBar::takesWheel() const { return -1; }
int KXUITabBar::pollInPanel() { return poll(); }

_KXFocus* KXUITabBar::keyboardPart() { return _state.get(); }

KXUIDescription KXUITabBar::description() const {
    KXUIDescription said = _described("tab bar", nullptr);
    if (const char* const chosen = title(selectedIndex()))
        said.value = _KXSpokenText(chosen);
    return said;
}
