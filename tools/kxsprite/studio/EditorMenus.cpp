#include "Editor.h"

#include <algorithm>

namespace {
enum Entry {
    New = 1,
    Open,
    Recent,
    Save,
    SaveAs,
    NewSheet,
    ChooseSheet,
    ReadSheet,
    ExportPicture,
    ExportAnimated,
    ExportJson,
    Quit,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    Delete,
    Duplicate,
    SelectAll,
    AnimationAdd,
    AnimationRename,
    AnimationDuplicate,
    AnimationDelete,
    AnimationUp,
    AnimationDown,
    AnimationLoops,
    AnimationCopy,
    FramesCells,
    FramesIslands,
    FindGrid,
    FramesCopy,
    FramesDuplicate,
    FramesDelete,
    FramesReverse,
    FramesPingPong,
    FramesEarlier,
    FramesLater,
    FramesLonger,
    FramesShorter,
    BoxAdd,
    BoxRename,
    BoxDuplicate,
    BoxDelete,
    BoxUp,
    BoxDown,
    BoxColor,
    BoxesCopy,
    PlayPause,
    First,
    Back,
    Forward,
    Last,
    Slower,
    Faster,
    ToolSelect,
    ToolCut,
    ToolCells,
    ToolIslands,
    ToolPencil,
    ToolEraser,
    ToolFill,
    ToolPick,
    StageLook,
    StageBoxes,
    ShowGrid,
    ShowPixels,
    ShowOnion,
    ShowFullSize,
    ShowBoxes,
    SheetIn,
    SheetOut,
    SheetFit,
    StageIn,
    StageOut,
    StageFit,
    Background,
    Checkerboard,
    ThemeDark,
    ThemeLight,
    ThemeContrast,
    HelpPage,
    FirstRecent = 1000
};

constexpr int ctrl = KXUICommand, shift = KXUIShift, alt = KXUIAlt;
} // namespace

void Editor::makeMenus() {
    _bar.addMenu("&File", {{"&New", New, {KXKeyN, ctrl}},
                           {"&Open...", Open, {KXKeyO, ctrl}},
                           {"Open &recent", Recent},
                           {},
                           {"&Save", Save, {KXKeyS, ctrl}},
                           {"Save &as...", SaveAs, {KXKeyS, ctrl | shift}},
                           {},
                           {"Ne&w sheet...", NewSheet, {KXKeyN, ctrl | alt}},
                           {"Choose s&heet...", ChooseSheet, {KXKeyO, ctrl | shift}},
                           {"Read sheet a&new", ReadSheet, {KXKeyF5}},
                           {},
                           {"Export &picture...", ExportPicture, {KXKeyE, ctrl}},
                           {"Export ani&mated picture...", ExportAnimated, {KXKeyE, ctrl | shift}},
                           {"Export &JSON...", ExportJson, {KXKeyJ, ctrl}},
                           {},
                           {"&Quit", Quit, {KXKeyQ, ctrl}}});
    _bar.addMenu("&Edit", {{"&Undo", Undo, {KXKeyZ, ctrl}},
                           {"&Redo", Redo, {KXKeyY, ctrl}},
                           {},
                           {"Cu&t", Cut, {KXKeyX, ctrl}},
                           {"&Copy", Copy, {KXKeyC, ctrl}},
                           {"&Paste", Paste, {KXKeyV, ctrl}},
                           {"Dup&licate", Duplicate, {KXKeyD, ctrl}},
                           {"&Delete", Delete, {KXKeyDelete, ctrl}},
                           {},
                           {"Select &all frames", SelectAll, {KXKeyA, ctrl}}});
    _bar.addMenu("&Animation", {{"&Add", AnimationAdd, {KXKeyN, ctrl | shift}},
                                {"&Rename", AnimationRename, {KXKeyF2}},
                                {"&Duplicate", AnimationDuplicate, {KXKeyD, ctrl | shift}},
                                {"Dele&te", AnimationDelete, {KXKeyDelete, ctrl | shift}},
                                {"&Copy", AnimationCopy, {KXKeyC, ctrl | shift}},
                                {},
                                {"Move &up", AnimationUp, {KXKeyUp, ctrl | shift}},
                                {"Move d&own", AnimationDown, {KXKeyDown, ctrl | shift}},
                                {},
                                {"Plays for &ever", AnimationLoops, {KXKeyL, ctrl}, KXUIMenuEntryCheck}});
    _bar.addMenu("F&rame", {{"Find &grid", FindGrid, {KXKeyG, ctrl | shift}},
                            {"Cut all &cells", FramesCells, {KXKeyK, ctrl}},
                            {"Cut all &islands", FramesIslands, {KXKeyI, ctrl}},
                            {},
                            {"C&opy", FramesCopy, {KXKeyC, ctrl | alt}},
                            {"&Duplicate", FramesDuplicate, {KXKeyD, ctrl | alt}},
                            {"Dele&te", FramesDelete, {KXKeyDelete, ctrl | alt}},
                            {},
                            {"&Reverse", FramesReverse, {KXKeyR, ctrl}},
                            {"&Ping-pong", FramesPingPong, {KXKeyR, ctrl | shift}},
                            {"&Earlier", FramesEarlier, {KXKeyLeft, ctrl | shift}},
                            {"&Later", FramesLater, {KXKeyRight, ctrl | shift}},
                            {"Lo&nger", FramesLonger, {KXKeyPeriod, ctrl}},
                            {"&Shorter", FramesShorter, {KXKeyComma, ctrl}}});
    _bar.addMenu("&Box", {{"&Add", BoxAdd, {KXKeyB, ctrl}},
                          {"&Rename", BoxRename, {KXKeyF2, shift}},
                          {"&Duplicate", BoxDuplicate, {KXKeyB, ctrl | shift}},
                          {"Dele&te", BoxDelete, {KXKeyDelete, alt}},
                          {"&Copy all", BoxesCopy, {KXKeyB, ctrl | alt}},
                          {"C&olour...", BoxColor, {KXKeyU, ctrl}},
                          {},
                          {"Move &up", BoxUp, {KXKeyUp, ctrl | alt}},
                          {"Move d&own", BoxDown, {KXKeyDown, ctrl | alt}}});
    _bar.addMenu("&Play", {{"&Play or pause", PlayPause, {KXKeyF8}},
                           {"&First frame", First, {KXKeyHome, ctrl}},
                           {"&Back", Back, {KXKeyF7}},
                           {"For&ward", Forward, {KXKeyF9}},
                           {"&Last frame", Last, {KXKeyEnd, ctrl}},
                           {},
                           {"&Slower", Slower, {KXKeyF7, shift}},
                           {"Fas&ter", Faster, {KXKeyF9, shift}},
                           {},
                           {"&Onion skin", ShowOnion, {KXKeyF6}, KXUIMenuEntryCheck}});
    _bar.addMenu("&Tools", {{"&Select", ToolSelect, {KXKey1, ctrl}, KXUIMenuEntryRadio, -1},
                            {"C&ut", ToolCut, {KXKey2, ctrl}, KXUIMenuEntryRadio},
                            {"&Cells", ToolCells, {KXKey3, ctrl}, KXUIMenuEntryRadio},
                            {"&Islands", ToolIslands, {KXKey4, ctrl}, KXUIMenuEntryRadio},
                            {"&Pencil", ToolPencil, {KXKey5, ctrl}, KXUIMenuEntryRadio},
                            {"&Eraser", ToolEraser, {KXKey6, ctrl}, KXUIMenuEntryRadio},
                            {"&Fill", ToolFill, {KXKey7, ctrl}, KXUIMenuEntryRadio},
                            {"Pic&k colour", ToolPick, {KXKey8, ctrl}, KXUIMenuEntryRadio},
                            {},
                            {"&Look", StageLook, {KXKey9, ctrl}, KXUIMenuEntryRadio, -1},
                            {"&Boxes", StageBoxes, {KXKey0, ctrl}, KXUIMenuEntryRadio}});
    _bar.addMenu("&View", {{"&Grid", ShowGrid, {KXKeyG, ctrl}, KXUIMenuEntryCheck},
                           {"&Pixels", ShowPixels, {KXKeyP, ctrl}, KXUIMenuEntryCheck},
                           {"&Full size", ShowFullSize, {KXKeyF, ctrl}, KXUIMenuEntryCheck},
                           {"Show bo&xes", ShowBoxes, {KXKeyH, ctrl}, KXUIMenuEntryCheck},
                           {"B&ackground...", Background, {KXKeyU, ctrl | shift}},
                           {"Chec&kerboard", Checkerboard, {KXKeyK, ctrl | shift}},
                           {},
                           {"Sheet larger", SheetIn, {KXKeyF3}},
                           {"Sheet smaller", SheetOut, {KXKeyF3, shift}},
                           {"Whole sheet", SheetFit, {KXKeyF3, ctrl}},
                           {"Frame larger", StageIn, {KXKeyF4}},
                           {"Frame smaller", StageOut, {KXKeyF4, shift}},
                           {"Whole frame", StageFit, {KXKeyF4, ctrl}},
                           {},
                           {"&Dark", ThemeDark, {KXKey1, ctrl | alt}, KXUIMenuEntryRadio},
                           {"Ligh&t", ThemeLight, {KXKey2, ctrl | alt}, KXUIMenuEntryRadio},
                           {"High &contrast", ThemeContrast, {KXKey3, ctrl | alt}, KXUIMenuEntryRadio}});
    _bar.addMenu("&Help", {{"&Keys and mouse", HelpPage, {KXKeyF1}}});
    _bar.setSize({-1, -1});
}

void Editor::choose(int entry) {
    if (entry >= FirstRecent) {
        const std::string path = _settings.recent[static_cast<std::size_t>(entry - FirstRecent)];
        return leave([this, path] { open(path); });
    }
    if (!chooseFile(entry) && !chooseEdit(entry) && !chooseAnimation(entry) && !chooseFrame(entry) &&
        !chooseBox(entry) && !choosePlay(entry))
        chooseView(entry);
}

bool Editor::chooseFile(int entry) {
    constexpr const char* pictures = "png bmp jpg jpeg gif webp tga";
    const auto openChosen = [this](const std::string& path) { open(path); };
    switch (entry) {
    case New:
        return leave([this] { begin({}, "", ""); }), true;
    case Open:
        return leave([=, this] {
                   browse(KXUIFileBrowserModeOpen, "spr json png bmp jpg jpeg gif webp tga ase aseprite", "",
                          openChosen);
               }),
               true;
    case Save:
        return save(), true;
    case SaveAs:
        return browse(KXUIFileBrowserModeSave, "spr", suggestedName(".spr"),
                      [this](const std::string& path) { saveTo(path, {}); }),
               true;
    case NewSheet:
        return leave([this] { askForSheet(); }), true;
    case ChooseSheet:
        return browse(KXUIFileBrowserModeOpen, pictures, "",
                      [this](const std::string& path) { useSheet(path); }),
               true;
    case ReadSheet:
        return readSheet(), true;
    case ExportPicture:
        return exportAs(".png"), true;
    case ExportAnimated:
        return exportAs(".gif"), true;
    case ExportJson:
        return exportAs(".json"), true;
    case Quit:
        return requestQuit(), true;
    default:
        return false;
    }
}

bool Editor::chooseEdit(int entry) {
    switch (entry) {
    case Undo:
        return _session.undo(), true;
    case Redo:
        return _session.redo(), true;
    case Cut:
        return copy(subject()), removeChosen(), true;
    case Copy:
        return copy(subject()), true;
    case Paste:
        return paste(), true;
    case Delete:
        return removeChosen(), true;
    case Duplicate:
        return duplicateChosen(), true;
    case SelectAll:
        return _session.chooseAllFrames(), true;
    default:
        return false;
    }
}

bool Editor::chooseAnimation(int entry) {
    switch (entry) {
    case AnimationAdd:
        _session.addAnimation("animation");
        return _side.poll(), _side.nameAnimation(), true;
    case AnimationRename:
        return _side.nameAnimation(), true;
    case AnimationDuplicate:
        return _session.duplicateAnimation(), true;
    case AnimationDelete:
        return _session.removeAnimation(), true;
    case AnimationCopy:
        return copy("animation"), true;
    case AnimationUp:
        return _session.moveAnimation(-1), true;
    case AnimationDown:
        return _session.moveAnimation(1), true;
    case AnimationLoops:
        return _session.setLoops(_bar.isEntryChecked(AnimationLoops)), true;
    default:
        return false;
    }
}

bool Editor::chooseFrame(int entry) {
    const int duration = _session.frame() ? _session.frame()->duration : 0;
    switch (entry) {
    case FindGrid:
        return findGrid(), true;
    case FramesCells:
        return cutCells(), true;
    case FramesIslands:
        return cutIslands(), true;
    case FramesCopy:
        return copy("frames"), true;
    case FramesDuplicate:
        return _session.duplicateFrames(), true;
    case FramesDelete:
        return _session.removeFrames(), true;
    case FramesReverse:
        return _session.reverseFrames(), true;
    case FramesPingPong:
        return _session.pingPongFrames(), true;
    case FramesEarlier:
        return _session.shiftFrames(-1), true;
    case FramesLater:
        return _session.shiftFrames(1), true;
    case FramesLonger:
        return _session.setDurations(_session.selection().frames, duration + 1), true;
    case FramesShorter:
        return _session.setDurations(_session.selection().frames, std::max(1, duration - 1)), true;
    default:
        return false;
    }
}

bool Editor::chooseBox(int entry) {
    switch (entry) {
    case BoxAdd:
        return addBox(), true;
    case BoxRename:
        return _side.nameBox(), true;
    case BoxDuplicate:
        return _session.duplicateBox(), true;
    case BoxDelete:
        return _session.removeBox(), true;
    case BoxesCopy:
        return copy("boxes"), true;
    case BoxUp:
        return _session.moveBox(-1), true;
    case BoxDown:
        return _session.moveBox(1), true;
    case BoxColor:
        return pick(Picked::BoxColor), true;
    default:
        return false;
    }
}

bool Editor::choosePlay(int entry) {
    switch (entry) {
    case PlayPause:
        return togglePlay(), true;
    case First:
        return stepFrame(INT32_MIN), true;
    case Back:
        return stepFrame(-1), true;
    case Forward:
        return stepFrame(1), true;
    case Last:
        return stepFrame(INT32_MAX), true;
    case Slower:
        return _player.setSpeed(_player.speed() / 2), true;
    case Faster:
        return _player.setSpeed(_player.speed() * 2), true;
    default:
        return false;
    }
}

bool Editor::chooseView(int entry) {
    const auto toggle = [&](bool& setting) { setting = _bar.isEntryChecked(entry) != 0; };
    const auto theme = [&](const char* name) {
        _settings.theme = name;
        applyTheme();
    };
    switch (entry) {
    case ToolSelect:
    case ToolCut:
    case ToolCells:
    case ToolIslands:
    case ToolPencil:
    case ToolEraser:
    case ToolFill:
    case ToolPick:
        return useSheetTool(static_cast<SheetTool>(entry - ToolSelect)), true;
    case StageLook:
    case StageBoxes:
        return useStageTool(static_cast<StageTool>(entry - StageLook)), true;
    case ShowGrid:
        return toggle(_settings.showsGrid), true;
    case ShowPixels:
        return toggle(_settings.showsPixels), true;
    case ShowOnion:
        return toggle(_settings.showsOnion), true;
    case ShowFullSize:
        return toggle(_settings.showsFullSize), true;
    case ShowBoxes:
        return toggle(_settings.showsBoxes), true;
    case Background:
        return pick(Picked::Background), true;
    case Checkerboard:
        return _settings.background = 0, true;
    case SheetIn:
        return _sheetView.zoomBy(1), true;
    case SheetOut:
        return _sheetView.zoomBy(-1), true;
    case SheetFit:
        return _sheetView.showWhole(), true;
    case StageIn:
        return _stage.zoomBy(1), true;
    case StageOut:
        return _stage.zoomBy(-1), true;
    case StageFit:
        return _stage.showWhole(), true;
    case ThemeDark:
        return theme("dark"), true;
    case ThemeLight:
        return theme("light"), true;
    case ThemeContrast:
        return theme("contrast"), true;
    case HelpPage:
        return showHelp(), true;
    default:
        return false;
    }
}

// What can be chosen now, and what is marked.
void Editor::showMenus() {
    const bool hasAnimation = _session.animation(), hasFrame = _session.frame(), hasBox = _session.box(),
               hasSheet = !_sheet.isEmpty();
    _bar.setEntryText(Undo, _session.canUndo() ? ("&Undo " + _session.undoName()).c_str() : "&Undo");
    _bar.setEntryText(Redo, _session.canRedo() ? ("&Redo " + _session.redoName()).c_str() : "&Redo");
    _bar.setEntryEnabled(Undo, _session.canUndo());
    _bar.setEntryEnabled(Redo, _session.canRedo());
    _bar.setEntryEnabled(Recent, !_settings.recent.empty());
    for (const int entry : {AnimationRename, AnimationDuplicate, AnimationDelete, AnimationCopy, AnimationUp,
                            AnimationDown, AnimationLoops})
        _bar.setEntryEnabled(entry, hasAnimation);
    for (const int entry : {FramesCopy, FramesDuplicate, FramesDelete, FramesReverse, FramesPingPong,
                            FramesEarlier, FramesLater, FramesLonger, FramesShorter, SelectAll})
        _bar.setEntryEnabled(entry, hasFrame);
    for (const int entry : {BoxRename, BoxDuplicate, BoxDelete, BoxUp, BoxDown, BoxColor})
        _bar.setEntryEnabled(entry, hasBox);
    for (const int entry : {FindGrid, FramesCells, FramesIslands, ReadSheet, ExportPicture, ExportAnimated})
        _bar.setEntryEnabled(entry, hasSheet);
    _bar.setEntryEnabled(BoxesCopy, !_session.project().boxes.empty());
    _bar.setEntryChecked(AnimationLoops, hasAnimation && _session.animation()->animation.loops);
    _bar.setEntryChecked(ToolSelect + static_cast<int>(_sheetView.tool()), -1);
    _bar.setEntryChecked(StageLook + static_cast<int>(_stage.tool()), -1);
    _bar.setEntryChecked(ShowGrid, _settings.showsGrid);
    _bar.setEntryChecked(ShowPixels, _settings.showsPixels);
    _bar.setEntryChecked(ShowOnion, _settings.showsOnion);
    _bar.setEntryChecked(ShowFullSize, _settings.showsFullSize);
    _bar.setEntryChecked(ShowBoxes, _settings.showsBoxes);
    _bar.setEntryChecked(_settings.theme == "light"      ? ThemeLight
                         : _settings.theme == "contrast" ? ThemeContrast
                                                         : ThemeDark,
                         -1);
}

void Editor::showRecent() {
    _bar.removeEntries(Recent);
    int id = FirstRecent;
    for (const std::string& path : _settings.recent) {
        std::string text;
        for (const char letter : path)
            text.append(letter == '&' ? 2 : 1, letter); // one alone underlines what follows
        _bar.addSubMenu(Recent, {{text.c_str(), id++}});
    }
}
