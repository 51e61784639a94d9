#include "Editor.h"

#include "Help.h"

#include <algorithm>
#include <cmath>
#include <utility>

// What lies over the window for a while and alone is used: questions, the help, colours, the size of a sheet.

static std::uint32_t numberOf(KXColor color) {
    const KXPixel pixel = KXPixelOf(color);
    return std::uint32_t{pixel.r} << 24 | std::uint32_t{pixel.g} << 16 | std::uint32_t{pixel.b} << 8 |
           pixel.a;
}

void Editor::makeOverlays() {
    _picker.setSize({-1, -1});
    _pickerDone.setText("Done");
    put(_colorsLayout, _colors, _picker, nullptr, 1);
    put(_colorsLayout, _colors, _pickerDone, nullptr);
    _colors.setDefaultButton(&_pickerDone);
    _colors.setCancelButton(&_pickerDone);
    _helpText.setText(helpText());
    _helpText.setReadOnly(-1);
    _helpText.setWraps(-1);
    _helpDone.setText("Close");
    put(_helpLayout, _help, _helpText, nullptr, 1);
    put(_helpLayout, _help, _helpDone, nullptr);
    _help.setCancelButton(&_helpDone);
    KXUISpinBoxOptions sides;
    sides.from = 1;
    sides.to = 4096;
    for (std::size_t i = 0; i < 2; ++i) {
        _sheetSides[i].setOptions(sides);
        _sheetSides[i].setNumber(i == 0 ? 128 : 64);
        _sheetSides[i].setSize({90, -1});
        _sheetLabels[i].setText(i == 0 ? "Width of the sheet" : "Height of the sheet");
        _sheetLabels[i].setWidget(&_sheetSides[i]);
        put(_sheetLayout, _newSheet, _sheetLabels[i], nullptr);
        put(_sheetLayout, _newSheet, _sheetSides[i], nullptr);
    }
    _sheetMake.setText("Make");
    _sheetCancel.setText("Cancel");
    put(_sheetLayout, _newSheet, _sheetMake, nullptr);
    put(_sheetLayout, _newSheet, _sheetCancel, nullptr);
    _newSheet.setDefaultButton(&_sheetMake);
    _newSheet.setCancelButton(&_sheetCancel);
    for (KXUIPanel* panel : {&_colors, &_help, &_newSheet})
        panel->setHasBackground(-1);
    for (KXUILayout* layout : {&_colorsLayout, &_helpLayout, &_sheetLayout})
        layout->setPadding(8);
    _colors.setLayout(&_colorsLayout);
    _help.setLayout(&_helpLayout);
    _newSheet.setLayout(&_sheetLayout);
}

void Editor::pollHelp() {
    if (_help.poll() && _helpDone.activated())
        _showsHelp = false;
}

void Editor::askForSheet() {
    _asksForSheet = true;
    _newSheet.focus(_sheetSides[0]);
}

void Editor::pollNewSheet() {
    if (!_newSheet.poll())
        return;
    _asksForSheet = !_sheetMake.activated() && !_sheetCancel.activated();
    if (_sheetMake.activated())
        beginSheet(static_cast<int>(_sheetSides[0].number()), static_cast<int>(_sheetSides[1].number()));
}

void Editor::pollPicker() {
    if (!_colors.poll())
        return;
    if (_picker.activated() && _picked == Picked::BoxColor)
        _session.setBoxColor(numberOf(_picker.color()), Join::Continue);
    else if (_picker.activated())
        _settings.background = numberOf(_picker.color());
    if (_pickerDone.activated())
        _picked = Picked::Nothing;
}

void Editor::pick(Picked what) {
    _picked = what;
    _picker.setColor(what == Picked::BoxColor    ? colorOf(_session.box()->color)
                     : _settings.background != 0 ? colorOf(_settings.background)
                                                 : KXMakeColori(64, 128, 96, 255));
    _picker.setShowsOpacity(what == Picked::BoxColor ? -1 : 0);
    if (what == Picked::BoxColor)
        _session.setBoxColor(_session.box()->color, Join::Begin);
    _colors.focus(_picker);
}

void Editor::showHelp() {
    _showsHelp = true;
    _help.focus(_helpText);
}

void Editor::ask(const std::string& message, std::initializer_list<const char*> answers,
                 const std::function<void(int)>& act) {
    _dialog = std::make_unique<KXUIDialogBox>();
    _dialog->setPadding(12);
    _dialog->setMessageWidth(360);
    _dialog->setMessage(message.c_str());
    for (const char* answer : answers)
        _dialog->addButton(answer);
    _question.add(*_dialog);
    _question.setCancelButton(_dialog->button(static_cast<int>(answers.size()) - 1));
    _question.focus(*_dialog);
    _answer = act;
}

void Editor::pollQuestion() {
    if (!_question.poll())
        return;
    const std::unique_ptr<KXUIDialogBox> asked = std::move(_dialog);
    const auto answer = std::move(_answer);
    answer(asked->buttonIndexClicked()); // which may ask the next one
}

void Editor::drawOver(KXUIPanel& panel, _KXUIWidget& box, KXSize window) {
    KXDrawRectFill({KXZeroPoint, window}, {0, 0, 0, 0.5f});
    const KXSize size = box.rect().size;
    box.setOrigin(
        {std::floor((window.width - size.width) / 2), std::floor((window.height - size.height) / 2)});
    panel.draw();
}

void Editor::drawOverlays(KXSize window) {
    if (_picked != Picked::Nothing) {
        const KXSize size = _colorsLayout.size();
        _colors.setSize(size);
        drawOver(_colors, _colors, window);
    }
    if (_asksForSheet) {
        _newSheet.setSize(_sheetLayout.size());
        drawOver(_newSheet, _newSheet, window);
    }
    if (_showsHelp) {
        _help.setSize({std::min(680.0f, window.width - 32), std::min(560.0f, window.height - 32)});
        drawOver(_help, _help, window);
    }
    if (_dialog)
        drawOver(_question, *_dialog, window);
}
