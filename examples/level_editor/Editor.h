// The window's widgets, and what they do.
#pragma once

#include "Canvas.h"

#include <memory>
#include <string>
#include <vector>

class Editor {
public:
    explicit Editor(const char* path);
    /// In each logic step.
    void poll();
    /// In each frame.
    void draw(KXSize window);

private:
    void makeMenus();
    void makeTools();
    void makeSide();
    void makeDialog();
    void choose(int entry);
    void pollTools();
    void pollLayers();
    void pollFiles();
    void pollAnswer();
    void changeLayers(int entry);
    void show();
    void open(const char* path);
    void save();
    void leave(int entry);
    void say(const std::string& text) { _status.setText(text.c_str()); }

    std::string _path;
    History _history;
    Canvas _canvas{_history};
    KXTexture _tiles{KXTempString("%s/assets/tiles.png", KXExecutablePath)};

    KXUIMenuBar _bar;
    KXUIToggleButton _tools[4];
    KXUIImageButton _tileButtons[tileCount];
    KXUILabel _layersLabel, _nameLabel, _sizeLabel, _status;
    KXUIListBox _layers;
    KXUITextEntry _name;
    KXUICheckBox _visible;
    KXUISpinBox _columns, _rows;
    KXUIButton _add, _remove;
    KXUILayout _all{KXUIColumn}, _toolBar{KXUIRow}, _middle{KXUIRow}, _side{KXUIColumn}, _buttons{KXUIRow},
        _size{KXUIRow}, _palette{KXUIGrid, 4};
    KXUIPanel _panel, _question;
    KXUIDialogBox _dialog;
    KXUIFileBrowser _files;
    bool _showsWhole = true;
    bool _saves = false, _asks = false; // what the browser is for; whether the question is open
    int _leaving = 0;                   // the entry that the question is about
};
