#include "SidePanel.h"

#include <algorithm>
#include <cmath>

namespace {
enum { Add, Copy, Remove, Up, Down };
constexpr int joinSteps = 60; // changes of a number within a second are one

Area areaOf(const KXUISpinBox& x, const KXUISpinBox& y, const KXUISpinBox& width, const KXUISpinBox& height) {
    return {static_cast<float>(x.number()), static_cast<float>(y.number()), static_cast<int>(width.number()),
            static_cast<int>(height.number())};
}

/// The rows of a list made the names, without those that are as they were being touched.
template<typename NameAt>
void showRows(KXUIListBox& list, int count, int selected, NameAt nameAt) {
    while (list.count() > count)
        list.remove(list.count() - 1);
    for (int i = 0; i < count; ++i) {
        const std::string text = nameAt(i);
        if (i >= list.count())
            list.add(text.c_str());
        else if (text != list.text(i))
            list.rename(i, text.c_str());
    }
    if (list.selectedIndex() != selected)
        list.setSelectedIndex(selected);
}

void showText(KXUITextEntry& entry, const std::string& text) {
    if (text != entry.text())
        entry.setText(text.c_str());
}
} // namespace

int SidePanel::Numbers::changed() const {
    const auto found =
        std::find_if(boxes.begin(), boxes.end(), [](const auto& box) { return box->activated(); });
    return found == boxes.end() ? -1 : static_cast<int>(found - boxes.begin());
}

// Only what has a fraction is shown with one.
void SidePanel::Numbers::show(std::initializer_list<double> numbers) {
    std::size_t i = 0;
    for (const double number : numbers) {
        KXUISpinBox& box = *boxes[i++];
        if (box.number() == number)
            continue;
        options.decimals = number == std::floor(number) ? 0 : 2;
        box.setOptions(options);
        box.setNumber(number);
    }
}

void SidePanel::Numbers::setUsable(bool shown, bool enabled) {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        labels[i]->setVisible(shown);
        boxes[i]->setVisible(shown);
        boxes[i]->setEnabled(enabled);
    }
}

bool SidePanel::wantsBox() const { return _boxButtons.all[Add].activated() != 0; }

int SidePanel::Buttons::clicked() const {
    const auto found =
        std::find_if(all.begin(), all.end(), [](const auto& button) { return button.activated(); });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

SidePanel::SidePanel(Session& session, KXUIPanel& panel, std::function<void(const std::string&)> say)
    : _session(session), _panel(panel), _say(std::move(say)) {
    makeAnimations();
    _all.addSpace(2);
    makePages();
}

void SidePanel::makeNumbers(Numbers& numbers, std::initializer_list<const char*> names, double from) {
    numbers.options.from = from;
    numbers.options.to = 32768;
    for (const char* name : names) {
        auto label = std::make_unique<KXUILabel>();
        auto box = std::make_unique<KXUISpinBox>(numbers.options);
        label->setText(name);
        label->setWidget(box.get());
        box->setSize({64, -1});
        numbers.grid.add(*label);
        numbers.grid.add(*box, 1);
        _panel.add(*label);
        _panel.add(*box);
        numbers.labels.push_back(std::move(label));
        numbers.boxes.push_back(std::move(box));
    }
}

void SidePanel::makeButtons(Buttons& buttons, const char* what) {
    const char* const texts[] = {"Add", "Copy", "Delete", "\u2191", "\u2193"};
    const char* const tips[] = {"A new %s", "Another %s like this one", "Deletes the %s",
                                "Moves the %s up in the list", "Moves the %s down in the list"};
    for (std::size_t i = 0; i < buttons.all.size(); ++i) {
        KXUIButton& button = buttons.all[i];
        button.setText(texts[i]);
        std::string tip = tips[i];
        button.setTooltip(tip.replace(tip.find("%s"), 2, what).c_str());
        buttons.row.add(button, i < Up ? 1 : 0);
        _panel.add(button);
    }
}

void SidePanel::makeAnimations() {
    _animationsLabel.setText("Animations");
    _animationsLabel.setWidget(&_animations);
    _animations.setSize({210, 110});
    _animationName.setSize({210, -1});
    _animationName.setPlaceholder("Name");
    _animationName.setTooltip("The name of the animation");
    _loops.setText("Plays for ever");
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_animationsLabel, &_animations})
        _panel.add(*each);
    _all.add(_animationsLabel);
    _all.add(_animations, 1);
    makeButtons(_animationButtons, "animation");
    _all.add(_animationButtons.row);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_animationName, &_loops}) {
        _panel.add(*each);
        _all.add(*each);
    }
}

void SidePanel::makePages() {
    for (const char* title : {"Frame", "Boxes", "Grid", "Paint"})
        _pages.add(title);
    _pages.setSize({210, -1});
    _panel.add(_pages);
    _all.add(_pages);

    makeNumbers(_frame, {"X", "Y", "Width", "Height"}, 0);
    _durationLabel.setText("Steps");
    _durationLabel.setWidget(&_duration);
    KXUISpinBoxOptions steps;
    steps.to = 99999;
    _duration.setOptions(steps);
    _duration.setSize({76, -1});
    _duration.setTooltip("How long the selected frames are shown, in logic steps");
    for (_KXUIWidget* each :
         std::initializer_list<_KXUIWidget*>{&_durationLabel, &_duration, &_millisecondsLabel}) {
        _panel.add(*each);
        _durationRow.add(*each);
    }
    _all.add(_frame.grid);
    _all.add(_durationRow);

    _boxesLabel.setText("Boxes");
    _boxesLabel.setWidget(&_boxes);
    _boxes.setSize({210, 70});
    _boxName.setSize({130, -1});
    _boxName.setPlaceholder("Name");
    _boxName.setTooltip("The name of the box");
    boxColor.setText("Colour...");
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_boxesLabel, &_boxes})
        _panel.add(*each);
    _all.add(_boxesLabel);
    _all.add(_boxes, 1);
    makeButtons(_boxButtons, "box");
    _all.add(_boxButtons.row);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_boxName, &boxColor})
        _panel.add(*each);
    _boxRow.add(_boxName, 1);
    _boxRow.add(boxColor);
    _all.add(_boxRow);
    makeNumbers(_box, {"X", "Y", "Width", "Height"}, -32768);
    _all.add(_box.grid);

    makeNumbers(_grid, {"X", "Y", "Width", "Height", "Gap X", "Gap Y"}, 0);
    _all.add(_grid.grid);
    findGrid.setText("Find");
    findGrid.setTooltip("Finds the grid by what is transparent");
    cutCells.setText("Cut cells");
    cutCells.setTooltip("Every cell that shows something becomes a frame");
    cutIslands.setText("Islands");
    cutIslands.setTooltip("Everything that hangs together becomes a frame");
    for (KXUIButton* each : {&findGrid, &cutCells, &cutIslands}) {
        _panel.add(*each);
        _gridRow.add(*each, 1);
    }
    _all.add(_gridRow);
    paint.setShowsOpacity(-1);
    paint.setSize({210, -1});
    _panel.add(paint);
    _all.add(paint);
}

void SidePanel::setStepMilliseconds(int milliseconds) {
    _stepMilliseconds = milliseconds;
    _shown = 0;
}

void SidePanel::showPage(Page page) {
    _pages.setSelectedIndex(static_cast<int>(page));
    _shown = 0;
}

void SidePanel::nameAnimation() {
    _panel.focus(_animationName);
    _animationName.selectAll();
}

void SidePanel::nameBox() {
    showPage(Page::Boxes);
    show();
    _panel.focus(_boxName);
    _boxName.selectAll();
}

// Changes of one number that follow each other are one step of undo.
Join SidePanel::joinFor(const void* what) {
    const bool goesOn = what == _joined && _joinedFor < joinSteps;
    _joined = what;
    _joinedFor = 0;
    return goesOn ? Join::Continue : Join::Begin;
}

void SidePanel::poll() {
    ++_joinedFor;
    pollAnimations();
    if (_pages.activated())
        _shown = 0;
    pollFrame();
    pollBoxes();
    pollGrid();
    if (_shown != _session.version())
        show();
}

// A name counts once Return is pressed or the keyboard leaves.
void SidePanel::pollName(KXUITextEntry& entry, KXUIListBox& list, bool& hadFocus, const std::string& name,
                         const std::function<bool(const std::string&)>& rename) {
    const bool hasFocus = entry.isFocused();
    const bool isDone = entry.entered() || (hadFocus && !hasFocus);
    hadFocus = hasFocus;
    if (entry.entered())
        _panel.focus(list); // so that what comes next is not typed
    if (!isDone || name == entry.text() || rename(entry.text()))
        return;
    _say(*entry.text() ? "There is one of this name already." : "A name cannot be empty.");
    entry.setText(name.c_str());
}

void SidePanel::pollAnimations() {
    const NamedAnimation* chosen = _session.animation();
    pollName(_animationName, _animations, _wasNaming[0], chosen ? chosen->name : "",
             [&](const std::string& name) { return _session.renameAnimation(name); });
    if (_animations.activated() && _animations.selectionChanged())
        _session.chooseAnimation(_animations.selectedIndex());
    if (_animations.activated() && _animations.activatedIndex() >= 0)
        nameAnimation();
    if (_loops.activated())
        _session.setLoops(_loops.isChecked());
    switch (_animationButtons.clicked()) {
    case Add:
        _session.addAnimation("animation");
        show();
        return nameAnimation();
    case Copy:
        return _session.duplicateAnimation();
    case Remove:
        return _session.removeAnimation();
    case Up:
        return _session.moveAnimation(-1);
    case Down:
        return _session.moveAnimation(1);
    default:
        return;
    }
}

void SidePanel::pollFrame() {
    if (const int i = _frame.changed(); i >= 0) {
        const auto& boxes = _frame.boxes;
        _session.setFrameBounds(_session.selection().frame,
                                areaOf(*boxes[0], *boxes[1], *boxes[2], *boxes[3]),
                                joinFor(boxes[static_cast<std::size_t>(i)].get()));
    }
    if (_duration.activated())
        _session.setDurations(_session.selection().frames, static_cast<int>(_duration.number()),
                              joinFor(&_duration));
}

void SidePanel::pollBoxes() {
    const NamedBox* chosen = _session.box();
    pollName(_boxName, _boxes, _wasNaming[1], chosen ? chosen->name : "",
             [&](const std::string& name) { return _session.renameBox(name); });
    if (_boxes.activated() && _boxes.selectionChanged())
        _session.chooseBox(_boxes.selectedIndex());
    if (_boxes.activated() && _boxes.activatedIndex() >= 0)
        nameBox();
    if (const int i = _box.changed(); i >= 0) {
        const auto& boxes = _box.boxes;
        _session.setBox(_session.selection().box, areaOf(*boxes[0], *boxes[1], *boxes[2], *boxes[3]),
                        joinFor(boxes[static_cast<std::size_t>(i)].get()));
    }
    switch (_boxButtons.clicked()) {
    case Copy:
        return _session.duplicateBox();
    case Remove:
        return _session.removeBox();
    case Up:
        return _session.moveBox(-1);
    case Down:
        return _session.moveBox(1);
    default:
        return;
    }
}

void SidePanel::pollGrid() {
    const int i = _grid.changed();
    if (i < 0)
        return;
    const auto at = [&](int k) { return static_cast<int>(_grid.at(k)); };
    _session.setGrid({at(0), at(1), at(2), at(3), at(4), at(5)},
                     joinFor(_grid.boxes[static_cast<std::size_t>(i)].get()));
}

void SidePanel::show() {
    const Project& project = _session.project();
    const NamedAnimation* animation = _session.animation();
    showRows(_animations, static_cast<int>(project.animations.size()), _session.selection().animation,
             [&](int i) {
                 const NamedAnimation& each = *project.animations[static_cast<std::size_t>(i)];
                 return each.animation.frames.empty() ? each.name + "  (no frames)" : each.name;
             });
    if (!_animationName.isFocused() || !animation)
        showText(_animationName, animation ? animation->name : "");
    _animationName.setEnabled(animation != nullptr);
    _loops.setEnabled(animation != nullptr);
    _loops.setChecked(animation && animation->animation.loops != 0);
    for (int i = Copy; i <= Down; ++i) {
        _animationButtons.all[static_cast<std::size_t>(i)].setEnabled(animation != nullptr);
        _boxButtons.all[static_cast<std::size_t>(i)].setEnabled(_session.box() != nullptr);
    }
    showFrame();
    showBoxes();
    const Grid& grid = project.grid;
    const bool isGrid = page() == Page::Grid;
    _grid.show({double(grid.x), double(grid.y), double(grid.width), double(grid.height), double(grid.gapX),
                double(grid.gapY)});
    _grid.setUsable(isGrid, true);
    for (KXUIButton* each : {&findGrid, &cutCells, &cutIslands})
        each->setVisible(isGrid);
    paint.setVisible(page() == Page::Paint);
    _shown = _session.version();
}

void SidePanel::showFrame() {
    const Frame* frame = _session.frame();
    const bool isShown = page() == Page::Frame;
    if (frame) {
        const Area& area = frame->bounds;
        _frame.show({double(area.x), double(area.y), double(area.width), double(area.height)});
        if (_duration.number() != frame->duration)
            _duration.setNumber(frame->duration);
        _millisecondsLabel.setText(KXTempString(
            "= %lld ms", std::max(1LL, static_cast<long long>(frame->duration)) * _stepMilliseconds));
    }
    _frame.setUsable(isShown, frame != nullptr);
    _duration.setEnabled(frame != nullptr);
    for (_KXUIWidget* each :
         std::initializer_list<_KXUIWidget*>{&_durationLabel, &_duration, &_millisecondsLabel})
        each->setVisible(isShown);
}

void SidePanel::showBoxes() {
    const NamedBox* box = _session.box();
    const auto& all = _session.project().boxes;
    const bool isShown = page() == Page::Boxes;
    showRows(_boxes, static_cast<int>(all.size()), _session.selection().box,
             [&](int i) { return all[static_cast<std::size_t>(i)].name; });
    if (!_boxName.isFocused() || !box)
        showText(_boxName, box ? box->name : "");
    if (box)
        _box.show(
            {double(box->area.x), double(box->area.y), double(box->area.width), double(box->area.height)});
    _box.setUsable(isShown, box != nullptr);
    _boxName.setEnabled(box != nullptr);
    boxColor.setEnabled(box != nullptr);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_boxesLabel, &_boxes, &_boxName, &boxColor})
        each->setVisible(isShown);
    for (KXUIButton& each : _boxButtons.all)
        each.setVisible(isShown);
}
