#include "Editor.h"
#include "../Paths.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <utility>

namespace {
constexpr int keepAfter = 30; // steps without a change, after which work is kept for the case of a crash
constexpr float speeds[] = {0.125f, 0.25f, 0.5f, 1, 2, 4};
} // namespace

void Editor::put(KXUILayout& layout, KXUIPanel& panel, _KXUIWidget& widget, const char* tooltip,
                 float stretch) {
    if (tooltip)
        widget.setTooltip(tooltip);
    layout.add(widget, stretch);
    panel.add(widget);
}

Editor::Editor(const std::string& folder)
    : _folder(folder), _settings(loadSettings(folder)), _savedSettings(_settings), _recovery(folder) {
    makeMenus();
    _panel.add(_bar);
    makeTools();
    makeMiddle();
    _all.setGap(4);
    _all.setPadding(4);
    _all.add(_bar);
    _all.add(_tools);
    _all.add(_middle, 1);
    _bottom.add(_status, 1);
    _bottom.add(_place);
    _panel.add(_status);
    _panel.add(_place);
    _all.add(_strip, {0, 92});
    _all.add(_bottom, {0, 18}); // also while it says nothing
    _panel.add(_strip);
    _panel.add(_files); // above all others
    _panel.setLayout(&_all);
    _panel.setHasBackground(-1);
    makeOverlays();
    applyTheme();
    showRecent();
    begin({}, "", "");
    _side.poll(); // shows its first page
    say("Open a picture to begin a sprite, or drop one here. F1 shows keys and mouse.");
}

Editor::~Editor() {
    if (!(_settings == _savedSettings))
        try {
            saveSettings(_settings, _folder);
        } catch (const std::exception&) { // settings are not worth more than that
        }
}

void Editor::makeTools() {
    const char* const sheetTools[][2] = {{"Select", "Choose and change frames on the sheet"},
                                         {"Cut", "Drag a rectangle on the sheet: it becomes a frame"},
                                         {"Cells", "Drag over cells of the grid: each becomes a frame"},
                                         {"Islands", "Click what hangs together: it becomes a frame"},
                                         {"Pencil", "Paints pixels in the colour of the page Paint"},
                                         {"Eraser", "Makes pixels transparent"},
                                         {"Fill", "Paints what is of one colour and hangs together"},
                                         {"Pick", "Takes the colour of a pixel"}};
    const char* const stageTools[][2] = {{"Look", "Look at the frame"},
                                         {"Boxes", "Drag boxes on the frame, and what is at their edges"}};
    for (std::size_t i = 0; i < std::size(sheetTools); ++i) {
        _sheetTools[i].setText(sheetTools[i][0]);
        put(_tools, _panel, _sheetTools[i], sheetTools[i][1]);
    }
    _tools.addSpace(12, 1);
    for (std::size_t i = 0; i < std::size(stageTools); ++i) {
        _stageTools[i].setText(stageTools[i][0]);
        put(_tools, _panel, _stageTools[i], stageTools[i][1]);
    }
    _tools.addSpace(12);
    const struct {
        KXUIButton& button;
        const char *text, *tip;
    } buttons[] = {{_first, "|\u25C0", "The first frame"},
                   {_back, "\u25C0", "The frame before"},
                   {_play, "\u25B6 Play", "Plays the animation, or pauses it"},
                   {_next, "\u25B6", "The next frame"},
                   {_last, "\u25B6|", "The last frame"}};
    for (const auto& [button, text, tip] : buttons) {
        button.setText(text);
        put(_tools, _panel, button, tip);
    }
    for (const char* text : {"1/8 speed", "1/4 speed", "1/2 speed", "Speed 1", "Speed 2", "Speed 4"})
        _speed.add(text);
    _speed.setSelectedIndex(3);
    _speed.setSize({-1, -1});
    put(_tools, _panel, _speed, "How fast it is played");
}

// The sheet, the stage and the lists.
void Editor::makeMiddle() {
    _split.setShare(_settings.sheetShare);
    _split.first().add(_sheetView, 1);
    _split.second().add(_stage, 1);
    _middle.add(_split, 1);
    _middle.add(_side.layout(), KXUILayoutItem{216}); // whatever page it shows
    _panel.add(_split);
    _panel.add(_sheetView);
    _panel.add(_stage);
    _side.setStepMilliseconds(_settings.stepMilliseconds);
    _strip.setStepMilliseconds(_settings.stepMilliseconds);
}

void Editor::applyTheme() {
    KXUITheme theme = _settings.theme == "light"      ? KXUILightTheme()
                      : _settings.theme == "contrast" ? KXUIHighContrastTheme()
                                                      : KXUIDarkTheme();
    theme.padding = {6, 4};
    KXUISetTheme(theme);
}

// ---- Each step ----

void Editor::poll() {
    pollSheet();
    if (_dialog)
        pollQuestion();
    else if (_showsHelp)
        pollHelp();
    else if (_picked != Picked::Nothing)
        pollPicker();
    else if (_asksForSheet)
        pollNewSheet();
    else
        pollWindow();
    if (_session.animation() && _player.isPlaying())
        _player.step(_session.animation()->animation);
    pollEvents();
    _sheet.show(_session.project().picture);
    keepWork();
    show();
}

void Editor::pollWindow() {
    if (_panel.poll()) {
        if (_bar.activated())
            choose(_bar.chosen());
        pollButtons();
        if (const char* const path = _files.activated() ? _files.path() : nullptr)
            std::exchange(_chosenFile, {})(path);
    }
    _side.poll();
    pollKeys();
}

void Editor::pollButtons() {
    for (int i = 0; i < 8; ++i)
        if (_sheetTools[i].activated())
            useSheetTool(static_cast<SheetTool>(i));
    for (int i = 0; i < 2; ++i)
        if (_stageTools[i].activated())
            useStageTool(static_cast<StageTool>(i));
    if (_play.activated())
        togglePlay();
    if (_first.activated())
        stepFrame(INT32_MIN);
    if (_back.activated())
        stepFrame(-1);
    if (_next.activated())
        stepFrame(1);
    if (_last.activated())
        stepFrame(INT32_MAX);
    if (_speed.activated())
        _player.setSpeed(speeds[_speed.selectedIndex()]);
    if (_split.activated())
        _settings.sheetShare = _split.share();
    if (_side.wantsBox())
        addBox();
    if (_side.findGrid.activated())
        findGrid();
    if (_side.cutCells.activated())
        cutCells();
    if (_side.cutIslands.activated())
        cutIslands();
    if (_side.boxColor.activated())
        pick(Picked::BoxColor);
    if (_side.paint.activated())
        _sheetView.paintColor = KXPixelOf(_side.paint.color());
    else if (_sheetView.activated() && _sheetView.tool() == SheetTool::Pick)
        _side.paint.setColor(KXColorOf(_sheetView.paintColor));
}

// What lists and pictures leave to whoever shows them.
void Editor::pollKeys() {
    const _KXUIWidget* focused = _panel.focused();
    const bool isOne = focused == &_strip || focused == &_stage || focused == &_sheetView ||
                       _side.isAboutAnimations() || _side.isAboutBoxes();
    for (const KXInputEvent& event : KXInputEvents())
        if (isOne && event.type == KXInputEventKeyDown && event.key == KXKeyDelete)
            removeChosen();
}

void Editor::pollEvents() {
    if (KXApplicationQuitRequested()) {
        KXApplicationCancelQuitRequest();
        if (!_dialog)
            requestQuit();
    }
    for (const KXInputEvent& event : KXInputEvents())
        if (event.type == KXInputEventFileDropped && !_dialog)
            leave([this, path = std::string(event.text)] { open(path); });
}

void Editor::useSheetTool(SheetTool tool) {
    _sheetView.setTool(tool);
    if (tool >= SheetTool::Pencil)
        _side.showPage(SidePanel::Page::Paint);
}

void Editor::useStageTool(StageTool tool) {
    _stage.setTool(tool);
    if (tool == StageTool::Boxes) {
        _settings.showsBoxes = true;
        _side.showPage(SidePanel::Page::Boxes);
    }
}

void Editor::togglePlay() {
    if (_player.isPlaying()) {
        _player.pause();
        _session.chooseFrame(_player.frame());
    } else if (_session.frame()) {
        _player.play(_session.animation()->animation, _session.selection().frame);
    }
}

// Around the ends for one frame, to an end for more than there are.
void Editor::stepFrame(int by) {
    if (!_session.frame())
        return;
    const int count = static_cast<int>(_session.animation()->animation.frames.size());
    const int from = _player.isPlaying() ? _player.frame() : _session.selection().frame;
    _player.pause();
    const std::int64_t to = std::int64_t{from} + by;
    _session.chooseFrame(by == 1 || by == -1 ? static_cast<int>((to + count) % count)
                                             : static_cast<int>(std::clamp<std::int64_t>(to, 0, count - 1)));
}

// Soon after the user has stopped for a moment, for the case that this never ends well.
void Editor::keepWork() {
    if (_session.version() == _kept) {
        _sinceKept = 0;
        return;
    }
    if (++_sinceKept < keepAfter)
        return;
    _kept = _session.version();
    _sinceKept = 0;
    try {
        if (_session.isSaved())
            _recovery.forget(_work);
        else
            _recovery.keep(_work, _session.project());
    } catch (const std::exception& fault) {
        say("Work is not kept for the case of a crash: " + std::string(fault.what()));
    }
}

// Everything shows what there is.
void Editor::show() {
    for (int i = 0; i < 8; ++i)
        _sheetTools[i].setState(i == static_cast<int>(_sheetView.tool()) ? KXUIToggleButtonStateOn
                                                                         : KXUIToggleButtonStateOff);
    for (int i = 0; i < 2; ++i)
        _stageTools[i].setState(i == static_cast<int>(_stage.tool()) ? KXUIToggleButtonStateOn
                                                                     : KXUIToggleButtonStateOff);
    _play.setState(_player.isPlaying() ? KXUIToggleButtonStateOn : KXUIToggleButtonStateOff);
    for (KXUIButton* each : std::initializer_list<KXUIButton*>{&_first, &_back, &_play, &_next, &_last})
        each->setEnabled(_session.frame() != nullptr);
    _speed.setSelectedIndex(static_cast<int>(
        std::find(std::begin(speeds), std::end(speeds) - 1, _player.speed()) - std::begin(speeds)));
    _bar.setEnabled(!_files.isShown()); // whose keys are other ones
    _sheetView.showsGrid = _settings.showsGrid;
    _sheetView.showsPixels = _stage.showsPixels = _settings.showsPixels;
    _stage.showsOnion = _settings.showsOnion;
    _stage.showsFullSize = _settings.showsFullSize;
    _stage.showsBoxes = _settings.showsBoxes;
    _stage.backgroundColor = colorOf(_settings.background);
    if (const char* const place = _sheetView.status(); std::strcmp(place, _place.text()) != 0)
        _place.setText(place);
    if (_shown == _session.version())
        return;
    _shown = _session.version();
    showMenus();
}

std::string Editor::title() const {
    const std::string name = _path.empty() ? "New sprite" : textOf(pathOf(_path).filename());
    return (_session.isSaved() ? name : "*" + name) + " - Sprite studio";
}

// ---- Each frame ----

void Editor::draw(KXSize window) {
    _settings.width = static_cast<int>(window.width);
    _settings.height = static_cast<int>(window.height);
    _panel.setRect(KXZeroPoint, window);
    _files.setRect({window.width / 8, window.height / 8}, {window.width * 0.75f, window.height * 0.75f});
    KXBeginDrawBatch();
    _panel.draw();
    drawOverlays(window);
    KXEndDrawBatch();
    KXUIDrawTooltip();
}
