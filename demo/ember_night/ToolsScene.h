#pragma once

#include "App.h"

#include <array>
#include <memory>
#include <string>

/// What tools are made of: widgets on pages, in panels that poll and draw them, in every theme.
class ToolsScene : public Scene {
public:
    explicit ToolsScene(App& app);
    ~ToolsScene() override;
    std::unique_ptr<Scene> step() override;
    void draw() override;
    bool takesLetters() override { return _panel.focused() != nullptr; }

private:
    void makeChoices();
    void makeSwatches();
    void makeTexts();
    void makeRows();
    void makeColors();
    void addPage(const char* title, KXUILayout& layout);
    void tellWhatActed();
    void tell(const std::string& news);
    void setTheme(int number);

    App& _app;
    KXUIPanel _panel;
    std::array<KXUIPanel, 4> _pages;
    KXUILayout _all{KXUIColumn}, _top{KXUIRow}, _bottom{KXUIRow}, _choices{KXUIGrid, 2}, _texts{KXUIColumn},
        _rows{KXUIColumn}, _colors{KXUIRow};
    KXUITabBar _tabs;
    KXUILabel _themeLabel, _news, _labels[6];
    KXUIDropDown _theme, _tool;
    KXUICheckBox _grid;
    KXUIRadioGroup _brush;
    KXUISpinBox _size;
    KXUINumberSlider _strength;
    KXUIProgressBar _progress;
    KXUITextArea _notes;
    KXUICheckBox _wraps;
    KXUISplitPanel _split;
    KXUITreeList _tree;
    KXUITable _table;
    KXUIColorPicker _picker;
    KXUIToast _toast;
    KXUIButton _toaster, _back;
    KXUIContextMenu _menu;
    KXUIMenuBar _bar;
    std::array<std::unique_ptr<KXTexture>, 12> _pictures;
    std::array<KXUIImageButton, 12> _swatches;
    KXUILayout _swatchRow{KXUIRow};
    KXUIScrollPanel _swatchPanel;
};
