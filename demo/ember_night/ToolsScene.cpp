#include "ToolsScene.h"

#include "WidgetsScene.h"

#include <cstdio>

ToolsScene::ToolsScene(App& app) : _app(app) {
    setTheme(0);
    _themeLabel.setText("Theme");
    _themeLabel.setWidget(&_theme);
    for (const char* name : {"Dark", "Light", "High contrast"})
        _theme.add(name);
    _theme.setSelectedIndex(0);
    _theme.setSize({-1, -1});
    _tabs.setSize({-1, -1});
    _news.setText("Tab goes through everything; the right button opens a menu.");
    _toaster.setText("A message");
    _back.setText("Back");

    _bar.addMenu("&Scene",
                 {{"&Feed the fire", 4, {KXKeyF, KXUICommand}}, {}, {"&Back", 3, {KXKeyB, KXUICommand}}});
    _bar.addMenu("&Theme", {{"&Dark", 10, {}, KXUIMenuEntryRadio, -1},
                            {"&Light", 11, {}, KXUIMenuEntryRadio},
                            {"&High contrast", 12, {}, KXUIMenuEntryRadio}});
    _bar.setSize({-1, -1});
    _panel.setHasBackground(-1);
    _panel.add(_bar);
    _all.add(_bar);
    _panel.add(_tabs);
    _panel.add(_themeLabel);
    _panel.add(_theme);
    _top.add(_tabs, 1);
    _top.add(_themeLabel);
    _top.add(_theme);
    _all.setPadding(12);
    _all.setGap(10);
    _all.add(_top);
    makeChoices();
    makeTexts();
    makeRows();
    makeColors();
    _tabs.setSelectedIndex(0);
    _bottom.add(_news, 1);
    _bottom.add(_toaster);
    _bottom.add(_back);
    _all.add(_bottom);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_news, &_toaster, &_back, &_toast, &_menu})
        _panel.add(*each);
    _panel.setCancelButton(&_back);
    _panel.setLayout(&_all);
    _panel.setRect(KXZeroPoint, Style::windowSize);
    _toast.setRect({200, 400}, {400, 32});
    _menu.add({{"Stoke the fire", 1, {KXKeyF2}}, {"Damp it", 2, {KXKeyF3}}, {}, {"Back", 3, {KXKeyEscape}}});
}

// The game's own look comes back.
ToolsScene::~ToolsScene() { Style::prepareWidgets(); }

void ToolsScene::setTheme(int number) {
    KXUITheme theme = number == 0   ? KXUIDarkTheme()
                      : number == 1 ? KXUILightTheme()
                                    : KXUIHighContrastTheme();
    theme.padding = {8, 5};
    KXUISetTheme(theme);
    _theme.setSelectedIndex(number);
    _bar.setEntryChecked(10 + number, -1);
}

void ToolsScene::addPage(const char* title, KXUILayout& layout) {
    KXUIPanel& page = _pages[static_cast<std::size_t>(_tabs.count())];
    _tabs.add(title);
    page.setLayout(&layout);
    _panel.add(page);
    _all.add(page, 1); // hidden ones take no room
}

void ToolsScene::makeChoices() {
    const std::pair<const char*, _KXUIWidget*> rows[] = {{"Tool", &_tool},     {"Brush", &_brush},
                                                         {"Size", &_size},     {"Strength", &_strength},
                                                         {"Done", &_progress}, {"Stamp", &_swatchPanel}};
    for (const char* name : {"Pencil", "Bucket", "Lantern"})
        _tool.add(name);
    _tool.setSelectedIndex(0);
    for (const char* name : {"Round", "Square"})
        _brush.add(name);
    _brush.setSelectedIndex(0);
    KXUISpinBoxOptions pixels;
    pixels.from = 1;
    pixels.to = 64;
    pixels.suffix = " px";
    _size.setOptions(pixels);
    KXUINumberSliderOptions percent;
    percent.to = 100;
    percent.step = 1;
    _strength.setOptions(percent);
    _strength.setNumber(40);
    _progress.setProgress(0.4f);
    _progress.setSize({200, 20});
    _strength.setSize({200, 22});
    _grid.setText("Snap to the grid");
    _grid.setChecked(-1);
    makeSwatches();
    _choices.setGap(10);
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        if (rows[i].second == &_tool || rows[i].second == &_size)
            rows[i].second->setSize({-1, -1});
        _labels[i].setText(rows[i].first);
        _labels[i].setWidget(rows[i].second);
        KXUILayoutItem place;
        place.horizontal = KXUIPlaceStart;
        _choices.add(_labels[i]);
        _choices.add(*rows[i].second, place);
        _pages[0].add(_labels[i]);
        _pages[0].add(*rows[i].second);
    }
    _choices.addSpace(0);
    _choices.add(_grid);
    _pages[0].add(_grid);
    addPage("Choices", _choices);
}

// Pictures to choose from, more than there is room for.
void ToolsScene::makeSwatches() {
    constexpr int side = 32;
    for (std::size_t i = 0; i < _swatches.size(); ++i) {
        KXImage image(side, side);
        const float share = static_cast<float>(i) / static_cast<float>(_swatches.size());
        image.drawCircleFill({side / 2, side / 2}, 4 + 12 * share, {1, 0.9f - 0.6f * share, 0.3f, 1});
        _pictures[i] = std::make_unique<KXTexture>(image);
        _swatches[i].setTexture(_pictures[i].get());
        _swatches[i].setTooltip(KXTempString("Spark %d", static_cast<int>(i) + 1));
        _swatchRow.add(_swatches[i]);
        _swatchPanel.add(_swatches[i]);
    }
    _swatchPanel.setLayout(&_swatchRow);
    _swatchPanel.setSize({300, 64});
}

void ToolsScene::makeTexts() {
    _notes.setText("The owl counts moths.\nThe cat counts owls.\nNobody counts the cat.");
    _notes.setShowsLineNumbers(-1);
    _wraps.setText("Wrap lines");
    _texts.add(_notes, 1);
    _texts.add(_wraps);
    _pages[1].add(_notes);
    _pages[1].add(_wraps);
    addPage("Text", _texts);
}

void ToolsScene::makeRows() {
    const int forest = _tree.add(0, "Forest");
    for (const char* name : {"Fire", "Logs", "Moon"})
        _tree.add(forest, name);
    const int barn = _tree.add(0, "Barn");
    _tree.add(barn, "Owl");
    _tree.setOpen(forest, -1);
    KXUITableColumn count;
    count.title = "Moths";
    count.align = KXTextAlignRight;
    count.numeric = -1;
    _table.addColumn({"Night", 160});
    _table.addColumn(count);
    for (int i = 1; i <= 40; ++i)
        _table.addRow({KXTempString("Night %d", i), KXTempString("%d", i * 37 % 101)});
    _split.first().add(_tree, 1);
    _split.second().add(_table, 1);
    _rows.add(_split, 1);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_tree, &_split, &_table})
        _pages[2].add(*each);
    addPage("Rows", _rows);
}

void ToolsScene::makeColors() {
    _picker.setSize({360, 300});
    _picker.setColor(Style::rose);
    _colors.add(_picker);
    _pages[3].add(_picker);
    addPage("Colours", _colors);
}

// Also a line on standard output, for whoever drives the screen from another program.
void ToolsScene::tell(const std::string& news) {
    _news.setText(news.c_str());
    std::puts(news.c_str());
    std::fflush(stdout);
}

// In the words in which it is read aloud.
void ToolsScene::tellWhatActed() {
    const auto tellOf = [this](const KXUIPanel& panel) {
        for (int i = 0; i < panel.count(); ++i) {
            const _KXUIWidget& widget = *panel.widget(i);
            const KXUIDescription said = widget.description();
            if (widget.activated() && said.role.find("panel") == std::string::npos && &widget != &_back &&
                &widget != &_bar)
                tell(said.role + " " + said.name + (said.value.empty() ? "" : ": " + said.value));
        }
    };
    tellOf(_panel);
    for (const KXUIPanel& page : _pages)
        tellOf(page);
    tellOf(_swatchPanel);
}

std::unique_ptr<Scene> ToolsScene::step() {
    for (int i = 0; i < static_cast<int>(_pages.size()); ++i)
        _pages[static_cast<std::size_t>(i)].setVisible(i == _tabs.selectedIndex());
    _progress.setProgress(static_cast<float>(_strength.number()) / 100);
    if (_panel.poll())
        tellWhatActed();
    if (_theme.activated())
        setTheme(_theme.selectedIndex());
    const int command = _bar.activated() ? _bar.chosen() : _menu.activated() ? _menu.chosen() : 0;
    if (command >= 10)
        setTheme(command - 10);
    if (_wraps.activated())
        _notes.setWraps(_wraps.isChecked());
    if (_toaster.activated() || command == 4)
        _toast.show("The fire has been fed.");
    if (!_menu.isOpen() && KXMouseWentUp(KXMouseRight))
        _menu.open(KXMousePoint);
    if (!_back.activated() && command != 3)
        return nullptr;
    _app.audio.play(Effect::Click);
    return std::make_unique<WidgetsScene>(_app);
}

void ToolsScene::draw() {
    KXBeginDrawBatch();
    _panel.draw();
    KXEndDrawBatch();
    KXUIDrawTooltip();
}
