#include "Editor.h"

namespace {
enum {
    New = 1,
    Open,
    Save,
    SaveAs,
    Quit,
    Undo,
    Redo,
    AddLayer,
    RemoveLayer,
    RaiseLayer,
    Grid,
    ZoomIn,
    ZoomOut,
    Whole,
    Light,
    Dark,
    Contrast
};
}

Editor::Editor(const char* path) {
    makeMenus();
    makeTools();
    makeSide();
    makeDialog();
    _middle.add(_side);
    _middle.add(_canvas, 1); // what is left
    _all.setGap(6);
    _all.setPadding(6);
    _all.add(_bar);
    _all.add(_toolBar);
    _all.add(_middle, 1);
    _all.add(_status);
    _panel.setLayout(&_all);
    _panel.setHasBackground(-1);
    _panel.add(_files); // above all others
    _history.begin(Level::empty());
    if (path)
        open(path);
    show();
}

// With the shortcuts that people expect.
void Editor::makeMenus() {
    _bar.addMenu("&File", {{"&New", New, {KXKeyN, KXUICommand}},
                           {"&Open...", Open, {KXKeyO, KXUICommand}},
                           {},
                           {"&Save", Save, {KXKeyS, KXUICommand}},
                           {"Save &as...", SaveAs, {KXKeyS, KXUICommand | KXUIShift}},
                           {},
                           {"&Quit", Quit, {KXKeyQ, KXUICommand}}});
    _bar.addMenu("&Edit", {{"&Undo", Undo, {KXKeyZ, KXUICommand}}, {"&Redo", Redo, {KXKeyY, KXUICommand}}});
    _bar.addMenu(
        "&Layer",
        {{"&Add", AddLayer}, {"&Remove", RemoveLayer}, {"R&aise", RaiseLayer, {KXKeyUp, KXUICommand}}});
    _bar.addMenu("&View", {{"&Grid", Grid, {KXKeyG, KXUICommand}, KXUIMenuEntryCheck, -1},
                           {"Zoom &in", ZoomIn, {KXKeyF3}},
                           {"Zoom &out", ZoomOut, {KXKeyF2}},
                           {"&Whole level", Whole, {KXKeyF4}},
                           {},
                           {"&Light", Light, {}, KXUIMenuEntryRadio},
                           {"&Dark", Dark, {}, KXUIMenuEntryRadio, -1},
                           {"High &contrast", Contrast, {}, KXUIMenuEntryRadio}});
    _bar.setSize({-1, -1});
    _panel.add(_bar);
}

void Editor::makeTools() {
    const char* const names[] = {"Brush", "Fill", "Erase", "Pick"};
    const char* const tips[] = {"Paints the tile that is chosen", "Fills what is connected",
                                "Takes tiles away", "Chooses the tile under the pointer"};
    for (int i = 0; i < 4; ++i) {
        _tools[i].setText(names[i]);
        _tools[i].setTooltip(tips[i]);
        _toolBar.add(_tools[i]);
        _panel.add(_tools[i]);
        _panel.setMnemonic(_tools[i], KXKey1 + i); // Alt and a digit
    }
    for (int i = 0; i < tileCount; ++i) {
        _tileButtons[i].setTexture(
            &_tiles,
            {{float(i % tilesInRow * tileSide), float(i / tilesInRow * tileSide)}, {tileSide, tileSide}});
        _tileButtons[i].setScale(1.5f);
        _tileButtons[i].setTooltip(KXTempString("Tile %d", i + 1));
        _palette.add(_tileButtons[i]);
        _panel.add(_tileButtons[i]);
    }
}

void Editor::makeSide() {
    _layersLabel.setText("Layers");
    _layersLabel.setWidget(&_layers);
    _nameLabel.setText("Name");
    _nameLabel.setWidget(&_name);
    _sizeLabel.setText("Size");
    _sizeLabel.setWidget(&_columns);
    _layers.setSize({150, 76});
    _name.setSize({150, -1});
    _visible.setText("Visible");
    _add.setText("Add");
    _remove.setText("Remove");
    KXUISpinBoxOptions cells;
    cells.from = 1;
    cells.to = 500;
    for (KXUISpinBox* each : {&_columns, &_rows}) {
        each->setOptions(cells);
        each->setSize({-1, -1});
        _size.add(*each, 1);
    }
    _buttons.add(_add, 1);
    _buttons.add(_remove, 1);
    _side.add(_palette);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_layersLabel, &_layers})
        _side.add(*each);
    _side.add(_buttons);
    for (_KXUIWidget* each : std::initializer_list<_KXUIWidget*>{&_nameLabel, &_name, &_visible, &_sizeLabel})
        _side.add(*each);
    _side.add(_size);
    _side.addSpace(0, 1);
    for (_KXUIWidget* each :
         std::initializer_list<_KXUIWidget*>{&_layersLabel, &_layers, &_add, &_remove, &_nameLabel, &_name,
                                             &_visible, &_sizeLabel, &_columns, &_rows, &_canvas, &_status})
        _panel.add(*each);
    _panel.setMnemonic(_layersLabel, KXKeyY);
}

void Editor::makeDialog() {
    _dialog.setPadding(12);
    _dialog.setMessage("The level was changed. Save it first?");
    for (const char* answer : {"Save", "Discard", "Cancel"})
        _dialog.addButton(answer);
    _question.add(_dialog);
    _question.setCancelButton(_dialog.button(2));
}

// Everything shows what there is.
void Editor::show() {
    const Level& level = _history.level;
    _canvas.layer = std::min(_canvas.layer, static_cast<int>(level.layers.size()) - 1);
    _layers.clear();
    for (const Layer& layer : level.layers)
        _layers.add((layer.name + (layer.isVisible ? "" : "  (hidden)")).c_str());
    _layers.setSelectedIndex(_canvas.layer);
    if (level.layers[_canvas.layer].name != _name.text())
        _name.setText(level.layers[_canvas.layer].name.c_str());
    _visible.setChecked(level.layers[_canvas.layer].isVisible);
    _columns.setNumber(level.columns);
    _rows.setNumber(level.rows);
    _remove.setEnabled(level.layers.size() > 1);
    _bar.setEntryEnabled(Undo, _history.canUndo());
    _bar.setEntryEnabled(Redo, _history.canRedo());
    _bar.setEntryEnabled(RemoveLayer, level.layers.size() > 1);
    for (int i = 0; i < 4; ++i)
        _tools[i].setState(i == static_cast<int>(_canvas.tool) ? KXUIToggleButtonStateOn
                                                               : KXUIToggleButtonStateOff);
}

void Editor::poll() {
    if (_asks)
        return pollAnswer();
    if (!_panel.poll())
        return;
    if (_bar.activated())
        choose(_bar.chosen());
    pollTools();
    pollLayers();
    pollFiles();
    show();
}

void Editor::pollTools() {
    for (int i = 0; i < 4; ++i)
        if (_tools[i].activated())
            _canvas.tool = static_cast<Tool>(i);
    for (int i = 0; i < tileCount; ++i)
        if (_tileButtons[i].activated())
            _canvas.tile = i;
    if (_canvas.activated())
        say(KXTempString("Column %d, row %d, tile %d", _canvas.column() + 1, _canvas.row() + 1,
                         _canvas.tile + 1));
}

void Editor::pollLayers() {
    if (_add.activated())
        changeLayers(AddLayer);
    if (_remove.activated())
        changeLayers(RemoveLayer);
    if (_layers.activated() && _layers.selectedIndex() >= 0)
        _canvas.layer = _layers.selectedIndex();
    if (!_name.activated() && !_visible.activated() && !_columns.activated() && !_rows.activated())
        return;
    _history.note();
    Layer& layer = _history.level.layers[_canvas.layer];
    layer.name = _name.text();
    layer.isVisible = _visible.isChecked();
    _history.level.resize(static_cast<int>(_columns.number()), static_cast<int>(_rows.number()));
}

void Editor::changeLayers(int entry) {
    _history.note();
    std::vector<Layer>& layers = _history.level.layers;
    int& present = _canvas.layer;
    if (entry == AddLayer) {
        present = static_cast<int>(layers.size());
        layers.push_back(
            {KXTempString("Layer %d", present + 1), true, std::vector<int>(layers[0].tiles.size(), -1)});
    } else if (entry == RemoveLayer && layers.size() > 1) {
        layers.erase(layers.begin() + present);
    } else if (entry == RaiseLayer && present > 0) {
        std::swap(layers[present], layers[present - 1]);
        --present;
    }
}

void Editor::choose(int entry) {
    const KXRect canvas = _canvas.rect();
    const KXPoint middle = {canvas.origin.x + canvas.size.width / 2,
                            canvas.origin.y + canvas.size.height / 2};
    switch (entry) {
    case New:
    case Open:
    case Quit:
        return leave(entry);
    case Save:
        return save();
    case SaveAs:
        _saves = true;
        return _files.show(KXUIFileBrowserModeSave, nullptr, "level.tmj");
    case Undo:
        return _history.undo();
    case Redo:
        return _history.redo();
    case Grid:
        _canvas.showsGrid = _bar.isEntryChecked(Grid);
        return;
    case ZoomIn:
        return _canvas.zoomAt(middle, 1.25f);
    case ZoomOut:
        return _canvas.zoomAt(middle, 0.8f);
    case Whole:
        return _canvas.showWhole();
    case Light:
        return KXUISetTheme(KXUILightTheme());
    case Dark:
        return KXUISetTheme(KXUIDarkTheme());
    case Contrast:
        return KXUISetTheme(KXUIHighContrastTheme());
    default:
        return changeLayers(entry);
    }
}

// What is not saved is asked about first.
void Editor::leave(int entry) {
    _leaving = entry;
    if (!_history.isSaved()) {
        _asks = true;
        _question.focus(_dialog);
    } else if (entry == New) {
        _path.clear();
        _history.begin(Level::empty());
        _showsWhole = true;
    } else if (entry == Open) {
        _saves = false;
        _files.show(KXUIFileBrowserModeOpen, nullptr);
    } else {
        KXApplicationRequestQuit();
    }
}

void Editor::pollAnswer() {
    if (!_question.poll())
        return;
    _asks = false;
    const int answer = _dialog.buttonIndexClicked();
    if (answer == 0)
        save();
    else if (answer == 1)
        _history.noteSaved();
    if (answer < 2 && _history.isSaved())
        leave(_leaving);
    show();
}

void Editor::pollFiles() {
    const char* const path = _files.activated() ? _files.path() : nullptr;
    if (!path)
        return;
    if (!_saves)
        return open(path);
    _path = path;
    save();
}

void Editor::open(const char* path) {
    Level level;
    if (!level.load(path))
        return say(KXError());
    _path = path;
    _history.begin(level);
    _showsWhole = true;
    say("Opened");
}

void Editor::save() {
    if (_path.empty())
        return choose(SaveAs);
    if (!_history.level.save(_path.c_str()))
        return say(KXError());
    _history.noteSaved();
    say("Saved");
}

void Editor::draw(KXSize window) {
    _panel.setRect(KXZeroPoint, window);
    if (_showsWhole && _canvas.rect().size.width > 0) { // once it has a place
        _canvas.showWhole();
        _showsWhole = false;
    }
    _files.setRect({window.width / 8, window.height / 8}, {window.width * 0.75f, window.height * 0.75f});
    KXBeginDrawBatch();
    _panel.draw();
    const KXRect chosen = _tileButtons[_canvas.tile].rect();
    KXDrawRect(chosen, {1, 0.85f, 0.5f, 1});
    if (_asks) {
        KXDrawRectFill({KXZeroPoint, window}, {0, 0, 0, 0.5f});
        const KXSize size = _dialog.rect().size;
        _dialog.setOrigin({(window.width - size.width) / 2, (window.height - size.height) / 2});
        _question.draw();
    }
    KXEndDrawBatch();
    KXUIDrawTooltip();
}
