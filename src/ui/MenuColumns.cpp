// Which columns of menus are open, and where they are.

#include "ui/KXUIMenuTree.h"

#include "core/ground/LogicClock.h"
#include "render/KXWindow.h"
#include "ui/WholePixels.h"

#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <utility>

static constexpr int border = 1;

static std::uint32_t millisecondsSince(std::uint32_t time) { return _KXLogicCurrentTime - time; }

_KXMenuEntry* _KXUIMenuTree::State::lit(int level) const {
    const Level& at = levels[level];
    return at.lit == -1 ? nullptr : at.entry->entries[at.lit].get();
}

/// Something is open from now on; the keyboard is its own.
void _KXUIMenuTree::State::begin() {
    if (isOpen())
        return;
    levels.push_back({&root});
    borrowKeyboard();
}

/// Closes everything.
void _KXUIMenuTree::State::dismiss() {
    if (!isOpen())
        return;
    shut();
    returnKeyboard();
}

void _KXUIMenuTree::State::shut() {
    levels.clear();
    isPressed = false;
    hoveredLevel = -1;
}

/// Closes what was opened from a level. The entry that it was opened from is lit.
void _KXUIMenuTree::State::closeTo(int level) {
    if (level >= innermost())
        return;
    levels[level].lit = levels[level + 1].place;
    levels.erase(levels.begin() + level + 1, levels.end());
    hoveredLevel = -1;
}

/// Opens the column of an entry, with nothing lit in it.
void _KXUIMenuTree::State::open(int level, int index) {
    closeTo(level);
    levels[level].lit = index;
    levels.push_back({lit(level), index});
    place();
}

void _KXUIMenuTree::State::choose(_KXMenuEntry& entry, _KXMenuEntry& parent) {
    parent.setChecked(entry, entry.kind == KXUIMenuEntryRadio || !entry.isChecked);
    if (entry.id)
        waiting.push_back(entry.id);
    dismiss();
}

/// Closes the columns of entries that are gone or cannot be come to any more.
void _KXUIMenuTree::State::forgetRemoved() {
    for (int level = 0; level <= innermost(); ++level) {
        Level& at = levels[level];
        const auto isThere = [&](int index) {
            return index < static_cast<int>(at.entry->entries.size()) &&
                   at.entry->entries[index]->isSelectable();
        };
        if (level < innermost() && !isThere(levels[level + 1].place))
            closeTo(level);
        if (at.lit != -1 && !isThere(at.lit))
            at.lit = -1;
    }
}

const _KXMenuRows& _KXUIMenuTree::State::rows(_KXMenuEntry& entry) const {
    return entry.measured(menu._fontInUse(), hasTitles && &entry == &root);
}

// What is drawn in the window has room for that.
static std::pair<int, int> roomIn(unsigned windowID) {
    for (const unsigned id : {windowID, KXMouseWindowID(), _KXLastWindowID})
        if (KXWindow* const window = id ? _KXWindowWithID(id) : nullptr) {
            const KXSize size = window->logicalSize();
            return {_KXWholePixel(size.width), _KXWholePixel(size.height)};
        }
    return {1 << 16, 1 << 16};
}

void _KXUIMenuTree::State::place() {
    for (int level = 0; level <= innermost(); ++level)
        placeLevel(level);
}

void _KXUIMenuTree::State::placeLevel(int level) {
    Level& at = levels[level];
    const _KXMenuRows& size = rows(*at.entry);
    if (isBar(level)) {
        const KXRect box = menu.rect();
        at.left = _KXWholePixel(box.origin.x);
        at.top = _KXWholePixel(box.origin.y);
        at.right = at.left + std::max(0, _KXWholePixel(box.size.width));
        at.bottom = at.top + std::max(0, _KXWholePixel(box.size.height));
        return;
    }
    const auto [roomWidth, roomHeight] = roomIn(windowID);
    const int width = std::min(size.width + 2 * border, roomWidth);
    int height = std::min(size.starts.back() + 2 * border, roomHeight), left = 0, top = 0;
    if (level == 0) {
        left = _KXWholePixel(corner.x);
        top = _KXWholePixel(corner.y);
    } else if (const Level& from = levels[level - 1]; isBar(level - 1)) {
        // Below the bar, or above it where there is more room.
        const int below = roomHeight - from.bottom;
        const bool goesUp = height > below && from.top > below;
        height = std::min(height, std::max(goesUp ? from.top : below, size.line + 2 * border));
        left = from.left + rows(*from.entry).starts[at.place];
        top = goesUp ? from.top - height : from.bottom;
    } else {
        left = from.right - border;
        if (left + width > roomWidth && from.left + border >= width)
            left = from.left + border - width;
        top = from.top + rows(*from.entry).starts[at.place] - from.scrolled;
    }
    at.left = std::max(0, std::min(left, roomWidth - width));
    at.top = std::max(0, std::min(top, roomHeight - height));
    at.right = at.left + width;
    at.bottom = at.top + height;
    scroll(at, 0);
}

/// How far a column can be scrolled.
int _KXUIMenuTree::State::furthest(const Level& level) const {
    return std::max(0, rows(*level.entry).starts.back() - level.room());
}

void _KXUIMenuTree::State::scroll(Level& level, std::int64_t pixels) {
    level.scrolled = static_cast<int>(std::clamp<std::int64_t>(level.scrolled + pixels, 0, furthest(level)));
}

/// -1 and 1 at the ends of a column behind which there is more, else 0.
int _KXUIMenuTree::State::moreAt(const Level& level, int y) const {
    if (y < level.top + border + endHeight && level.scrolled > 0)
        return -1;
    return y >= level.bottom - border - endHeight && level.scrolled < furthest(level) ? 1 : 0;
}

/// Scrolls by as little as brings what is lit into view.
void _KXUIMenuTree::State::reveal(Level& level) {
    const std::vector<int>& starts = rows(*level.entry).starts;
    if (level.lit == -1)
        return;
    const int last = static_cast<int>(level.entry->entries.size()) - 1;
    const int above = level.lit == 0 ? 0 : endHeight, below = level.lit == last ? 0 : endHeight;
    const int bottom = starts[level.lit + 1] + below - level.room(), top = starts[level.lit] - above;
    scroll(level, std::min(std::max(level.scrolled, bottom), top) - std::int64_t{level.scrolled});
}

static int indexAt(const std::vector<int>& starts, int at) {
    if (at < 0 || at >= starts.back())
        return -1;
    return static_cast<int>(std::ranges::upper_bound(starts, at) - starts.begin()) - 1;
}

/// The title at a place in the bar, -1 for none.
int _KXUIMenuTree::State::titleAt(int x) {
    return indexAt(rows(root).starts, x - _KXWholePixel(menu.rect().origin.x));
}

_KXUIMenuTree::State::Spot _KXUIMenuTree::State::spot() {
    if (menu._mouseIsElsewhere())
        return {};
    const int x = KXMouseX, y = KXMouseY;
    for (int level = innermost(); level >= 0; --level) {
        const Level& at = levels[level];
        if (x < at.left || x >= at.right || y < at.top || y >= at.bottom)
            continue;
        int index = -1;
        if (isBar(level))
            index = titleAt(x);
        else if (!moreAt(at, y))
            index = indexAt(rows(*at.entry).starts, y - at.top - border + at.scrolled);
        return {level, index != -1 && at.entry->entries[index]->isSelectable() ? index : -1};
    }
    return {};
}

// What was open beside the entry under the pointer closes, what it has opens.
void _KXUIMenuTree::State::settle() {
    const int level = hoveredLevel, index = levels[level].lit;
    isSettled = true;
    if (index == -1 || (level < innermost() && levels[level + 1].place == index))
        return;
    closeTo(level);
    hoveredLevel = level;
    levels[level].lit = index;
    if (lit(level)->isMenu)
        open(level, index);
}

void _KXUIMenuTree::State::passTime() {
    constexpr std::uint32_t rest = 300, scrollEvery = 60; // milliseconds
    if (!isOpen())
        return;
    if (hoveredLevel != -1 && !isBar(hoveredLevel) && !isSettled && millisecondsSince(hoverTime) >= rest)
        settle();
    place();
    if (_KXIsElsewhere(windowID, KXMouseWindowID))
        return;
    claimPointer(menu);
    const Spot at = spot();
    if (!isByMouse || at.level == -1 || isBar(at.level))
        return;
    Level& level = levels[at.level];
    const int way = moreAt(level, KXMouseY);
    if (!way || millisecondsSince(scrollTime) < scrollEvery)
        return;
    scrollTime = _KXLogicCurrentTime;
    scroll(level, std::int64_t{way} * rows(*level.entry).line);
}
