#include <Kobaltrix/KXUITreeList.h>

#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/ItemList.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTexture.h>

#include <algorithm>
#include <climits>
#include <new>
#include <string>
#include <unordered_map>
#include <utility>

namespace {
struct Node : _KXListItem {
    int id = 0;
    Node* parent = nullptr;
    std::vector<Node*> children;
    std::string text;
    KXTexture* icon = nullptr;
    int depth = 0; // as it is shown
    bool isOpen = false;
};
} // namespace

struct KXUITreeList::State : _KXItemList {
    explicit State(KXUITreeList& tree) : _KXItemList(tree) { top.isOpen = true; }

    std::unordered_map<int, Node> nodes; ///< By their numbers; they stay where they are.
    Node top;
    int lastID = 0;
    bool isShown = true; ///< All that is to be shown.
    int activated = 0, toggled = 0, toggledNow = 0;

    Node* find(int id);
    Node* parentFor(int id) { return id == 0 ? &top : find(id); }
    bool placeFor(int parent, int before, Node*& holder, std::size_t& index);
    void look();
    void toggle(Node& node, bool opens);
    void openAround(const Node& node);
    KXRect markOf(const Node& node, KXRect row) const;

    const char* textOf(const _KXListItem& item) const override {
        return static_cast<const Node&>(item).text.c_str();
    }
    void drawRow(const _KXListItem& item, KXRect box, KXColor text) override;

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
};

static int idOf(const _KXListItem* item) { return item ? static_cast<const Node*>(item)->id : 0; }

Node* KXUITreeList::State::find(int id) {
    const auto found = nodes.find(id);
    return found == nodes.end() ? nullptr : &found->second;
}

// Where a node is to be put; false if there is no such place.
bool KXUITreeList::State::placeFor(int parent, int before, Node*& holder, std::size_t& index) {
    holder = parentFor(parent);
    if (!holder)
        return false;
    index = holder->children.size();
    if (before == 0)
        return true;
    const Node* const next = find(before);
    if (!next || next->parent != holder)
        return false;
    index = static_cast<std::size_t>(std::ranges::find(holder->children, next) - holder->children.begin());
    return true;
}

/// Brings the rows to what is to be shown now.
void KXUITreeList::State::look() {
    place(widget.rect());
    if (isShown)
        return;
    std::vector<_KXListItem*> rows;
    std::vector<std::pair<Node*, std::size_t>> path = {{&top, 0}}; // trees may be deeper than a stack
    while (!path.empty()) {
        auto& [node, next] = path.back();
        if (!node->isOpen || next == node->children.size()) {
            path.pop_back();
            continue;
        }
        Node* const child = node->children[next++];
        child->depth = static_cast<int>(path.size()) - 1;
        rows.push_back(child);
        path.emplace_back(child, 0);
    }
    show(std::move(rows));
    isShown = true;
}

// What is selected below a node that closes would be out of sight: the node is instead.
void KXUITreeList::State::toggle(Node& node, bool opens) {
    if (node.isOpen == opens || node.children.empty())
        return;
    bool hides = false;
    for (const Node* at = static_cast<const Node*>(selected()); at && !opens; at = at->parent)
        hides |= at == &node && idOf(selected()) != node.id;
    if (hides)
        userSelects(node);
    node.isOpen = opens;
    isShown = false;
    toggledNow = node.id;
    touched();
    look();
}

void KXUITreeList::State::openAround(const Node& node) {
    std::vector<Node*> opened;
    for (Node* at = node.parent; at != &top; at = at->parent)
        if (!at->isOpen)
            opened.push_back(at);
    const auto setAll = [&](bool isOpen) {
        for (Node* const each : opened)
            each->isOpen = isOpen;
    };
    setAll(true);
    isShown = isShown && opened.empty();
    try {
        look();
    } catch (const std::bad_alloc&) {
        setAll(false);
        throw;
    }
}

// A square as high as the row, as deep in as the node is.
KXRect KXUITreeList::State::markOf(const Node& node, KXRect row) const {
    constexpr int deepest = 1000; // beyond any box
    const float side = row.size.height;
    const float left = side * static_cast<float>(std::min(node.depth, deepest)) * 0.75f;
    return {{row.origin.x + static_cast<float>(_KXWholePixel(left)), row.origin.y}, {side, side}};
}

void KXUITreeList::State::drawRow(const _KXListItem& item, KXRect box, KXColor text) {
    const Node& node = static_cast<const Node&>(item);
    const KXRect mark = markOf(node, box);
    if (!node.children.empty())
        _KXDrawArrow(mark, node.isOpen ? KXDirectionDown : KXDirectionRight, text);
    float left = mark.origin.x + mark.size.width;
    if (node.icon) {
        const float side = box.size.height - 2;
        KXDrawOptions options;
        options.position = {left, box.origin.y + 1};
        options.size = {side, side};
        options.tint = _KXWidgetColor({1, 1, 1, 1});
        node.icon->draw(options);
        left += side + KXUIWidgetInnerPadding.width;
    }
    KXTextOptions options;
    options.width = std::max(1.0f, box.origin.x + box.size.width - left - KXUIWidgetInnerPadding.width);
    options.height = box.size.height;
    options.verticalAlign = KXTextMiddle;
    options.align = KXTextAlignLeft;
    options.maxLines = 1;
    KXTextLayout& layout = layoutOf(node.row, 0, 1);
    layout.layOut(*widget._fontInUse(), node.text.c_str(), options);
    layout.draw({left, box.origin.y}, text);
}

void KXUITreeList::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    look();
    const bool press =
        event.type == KXInputEventMouseDown && event.button == KXMouseLeft && !modifiers.control;
    const int row = press && list.mouseOver() ? list.indexAt(KXMousePoint) : -1;
    if (auto* const node = static_cast<Node*>(itemAt(row)); node && !node->children.empty()) {
        const float height = static_cast<float>(rowHeight());
        const float left = static_cast<float>(_KXWholePixel(list.rect().origin.x) + 1);
        const KXRect mark = markOf(*node, {{left, 0}, {list.rect().size.width, height}});
        const float x = static_cast<float>(KXMouseX) - mark.origin.x;
        if (x >= 0 && x < mark.size.width) {
            pressBeside();
            return toggle(*node, !node->isOpen);
        }
    }
    _KXItemList::heardMouse(event, modifiers);
}

void KXUITreeList::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    look();
    auto* const node = static_cast<Node*>(selected());
    const bool isRight = key.key == KXKeyRight, isLeft = key.key == KXKeyLeft;
    if (!node || (!isLeft && !isRight))
        return _KXItemList::heardKey(key, modifiers);
    const bool isOpen = node->isOpen && !node->children.empty();
    if (isRight && isOpen)
        userSelects(*node->children.front());
    else if (isRight)
        toggle(*node, true);
    else if (isOpen)
        toggle(*node, false);
    else if (node->parent != &top)
        userSelects(*node->parent);
}

KXUITreeList::KXUITreeList() : _state(std::make_unique<State>(*this)) { _state->setColors(_state->colors); }

KXUITreeList::~KXUITreeList() = default;

int KXUITreeList::add(int parent, const char* text, int before) {
    State& state = *_state;
    Node* holder = nullptr;
    std::size_t index = 0;
    if (!text || state.lastID == INT_MAX || !state.placeFor(parent, before, holder, index))
        return 0;
    std::string copy = text;
    holder->children.reserve(
        holder->children.size() == holder->children.capacity() ? 2 * holder->children.size() + 1 : 0);
    Node& node = state.nodes[state.lastID + 1]; // the last that may lack memory
    node.id = ++state.lastID;
    node.parent = holder;
    node.text = std::move(copy);
    holder->children.insert(holder->children.begin() + static_cast<std::ptrdiff_t>(index), &node);
    state.isShown = false;
    return node.id;
}

int KXUITreeList::move(int id, int parent, int before) {
    State& state = *_state;
    Node *const node = state.find(id), *holder = nullptr;
    std::size_t index = 0;
    if (!node || before == id || !state.placeFor(parent, before, holder, index))
        return 0;
    for (const Node* at = holder; at; at = at->parent)
        if (at == node)
            return 0;
    holder->children.reserve(holder->children.size() + 1);
    std::vector<Node*>& old = node->parent->children;
    const auto place = std::ranges::find(old, node);
    if (node->parent == holder && place - old.begin() < static_cast<std::ptrdiff_t>(index))
        --index;
    old.erase(place);
    holder->children.insert(holder->children.begin() + static_cast<std::ptrdiff_t>(index), node);
    node->parent = holder;
    state.isShown = false;
    return -1;
}

int KXUITreeList::remove(int id) {
    State& state = *_state;
    Node* node = state.find(id);
    if (!node)
        return 0;
    std::erase(node->parent->children, node);
    const Node* const above = node->parent;
    while (node != above) { // from the innermost on
        if (!node->children.empty()) {
            Node* const last = node->children.back();
            node->children.pop_back();
            node = last;
            continue;
        }
        Node* const parent = node->parent;
        const bool isLast = node->id == id;
        state.forget(*node);
        state.nodes.erase(node->id);
        if (isLast)
            break;
        node = parent;
    }
    state.isShown = false;
    return -1;
}

void KXUITreeList::clear() {
    _state->show({});
    _state->nodes.clear();
    _state->top.children.clear();
    _state->isShown = true;
}

int KXUITreeList::rename(int id, const char* text) {
    Node* const node = _state->find(id);
    if (!node || !text)
        return 0;
    node->text = std::string(text);
    return -1;
}

int KXUITreeList::setIcon(int id, KXTexture* icon) {
    Node* const node = _state->find(id);
    if (node)
        node->icon = icon;
    return node ? -1 : 0;
}

int KXUITreeList::count() const { return static_cast<int>(_state->nodes.size()); }

const char* KXUITreeList::text(int id) const {
    const Node* const node = _state->find(id);
    return node ? node->text.c_str() : nullptr;
}

int KXUITreeList::parent(int id) const {
    const Node* const node = _state->find(id);
    return node ? node->parent->id : 0;
}

int KXUITreeList::childCount(int id) const {
    const Node* const node = _state->parentFor(id);
    return node ? static_cast<int>(node->children.size()) : 0;
}

int KXUITreeList::child(int id, int index) const {
    return index >= 0 && index < childCount(id)
               ? _state->parentFor(id)->children[static_cast<std::size_t>(index)]->id
               : 0;
}

int KXUITreeList::setOpen(int id, int open) {
    Node* const node = _state->find(id);
    if (!node)
        return 0;
    if (std::exchange(node->isOpen, open != 0) != (open != 0))
        _state->isShown = false;
    return -1;
}

int KXUITreeList::isOpen(int id) const {
    const Node* const node = _state->find(id);
    return node && node->isOpen ? -1 : 0;
}

int KXUITreeList::selectedNode() const {
    _state->look();
    return idOf(_state->selected());
}

int KXUITreeList::setSelectedNode(int id) {
    const Node* const node = _state->find(id);
    if (node)
        _state->openAround(*node);
    _state->look();
    return node || id == 0 ? _state->list.setSelectedIndex(node ? node->row : -1) : 0;
}

void KXUITreeList::setMultipleSelection(int multiple) {
    _state->look();
    _state->list.setMultipleSelection(multiple);
}

int KXUITreeList::isSelected(int id) const {
    _state->look();
    const Node* const node = _state->find(id);
    return node ? _state->list.isSelected(node->row) : 0;
}

int KXUITreeList::setSelected(int id, int selected) {
    const Node* const node = _state->find(id);
    if (!node)
        return 0;
    if (selected)
        _state->openAround(*node);
    _state->look();
    _state->list.setSelected(node->row, selected);
    return -1;
}

int KXUITreeList::nextSelectedNode(int after) const {
    _state->look();
    const Node* const node = _state->find(after);
    if (after != 0 && !node)
        return 0;
    return idOf(_state->itemAt(_state->list.nextSelectedIndex(node ? node->row : -1)));
}

int KXUITreeList::scrollTo(int id) {
    const Node* const node = _state->find(id);
    if (!node)
        return 0;
    _state->openAround(*node);
    return _state->list.scrollTo(node->row);
}

int KXUITreeList::nodeAt(KXPoint point) {
    _state->look();
    return idOf(_state->itemAt(_state->list.indexAt(point)));
}

void KXUITreeList::setFocus(int focus) { focus ? _state->takeKeyboard() : _state->giveUpKeyboard(); }
int KXUITreeList::hasFocus() const { return _state->hasKeyboard() ? -1 : 0; }

int KXUITreeList::poll() {
    State& state = *_state;
    state.look();
    const int told = state.poll();
    state.activated = idOf(state.itemAt(state.list.activatedIndex()));
    state.toggled = std::exchange(state.toggledNow, 0);
    return told;
}

int KXUITreeList::selectionChanged() const { return _state->list.selectionChanged(); }
int KXUITreeList::activatedNode() const { return _state->activated; }
int KXUITreeList::toggledNode() const { return _state->toggled; }

int KXUITreeList::setFont(const char* path, KXAliasMode mode) {
    _state->list.setFont(path, mode);
    return _KXUIWidget::setFont(path, mode);
}

int KXUITreeList::setFontSize(int size) {
    return _KXUIWidget::setFontSize(size) ? _state->list.setFontSize(size) : 0;
}

void KXUITreeList::setWindowID(unsigned id) {
    _KXUIWidget::setWindowID(id);
    _state->windowID = id;
    _state->list.setWindowID(id);
}

void KXUITreeList::setColors(const KXUIColors& colors) { _state->setColors(colors); }

void KXUITreeList::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing)
        return;
    _state->look();
    _state->list.draw();
}

int KXUITreeList::pollInPanel() { return poll(); }
int KXUITreeList::takesWheel() const { return -1; }
_KXFocus* KXUITreeList::keyboardPart() { return _state.get(); }

KXUIDescription KXUITreeList::description() const {
    KXUIDescription said = _described("tree", nullptr);
    const int selected = selectedNode();
    if (!selected)
        return said;
    said.value = _KXSpokenText(text(selected));
    if (childCount(selected) > 0)
        _KXAddState(said, isOpen(selected) ? "open" : "closed");
    return said;
}
