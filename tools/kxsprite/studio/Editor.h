#pragma once

#include "FrameStrip.h"
#include "Player.h"
#include "Session.h"
#include "Settings.h"
#include "Sheet.h"
#include "SheetView.h"
#include "SidePanel.h"
#include "StageView.h"

#include <Kobaltrix/Kobaltrix.h>

#include <functional>
#include <memory>
#include <string>

/// The studio's window: its widgets, and what they do.
class Editor {
public:
    /// @param folder of the settings and of work to recover, empty to keep nothing.
    explicit Editor(const std::string& folder);
    ~Editor();

    /// Opens a file as the user could. False, with the reason shown, if it cannot be.
    bool open(const std::string& path);
    /// Asks whether work that was not saved when the studio ended last shall go on. False where there is
    /// none.
    bool offerRecovery(const std::string& path);
    /// In each logic step.
    void poll();
    /// In each frame.
    void draw(KXSize window);
    /// The user wants to close the window. What is not saved is asked about first.
    void requestQuit();
    bool hasQuit() const { return _hasQuit; }

    const Settings& settings() const { return _settings; }
    const Session& session() const { return _session; }
    /// The line at the bottom.
    const char* status() const { return _status.text(); }
    /// What the window is called.
    std::string title() const;

private:
    enum class Picked { Nothing, BoxColor, Background };

    // The window: Editor.cpp.
    static void put(KXUILayout& layout, KXUIPanel& panel, _KXUIWidget& widget, const char* tooltip,
                    float stretch = 0);
    void makeTools();
    void makeMiddle();
    void pollWindow();
    void pollButtons();
    void pollKeys();
    void pollEvents();
    void keepWork();
    void show();
    void say(const std::string& text) { _status.setText(text.c_str()); }
    void applyTheme();
    void useSheetTool(SheetTool tool);
    void useStageTool(StageTool tool);
    void togglePlay();
    void stepFrame(int by);

    // What lies over it: EditorOverlays.cpp.
    void makeOverlays();
    void pollQuestion();
    void pollHelp();
    void pollNewSheet();
    void pollPicker();
    void showHelp();
    void askForSheet();
    void pick(Picked what);
    void ask(const std::string& message, std::initializer_list<const char*> answers,
             const std::function<void(int)>& act);
    void drawOver(KXUIPanel& panel, _KXUIWidget& box, KXSize window);
    void drawOverlays(KXSize window);

    // What can be chosen: EditorMenus.cpp.
    void makeMenus();
    void choose(int entry);
    bool chooseFile(int entry);
    bool chooseEdit(int entry);
    bool chooseAnimation(int entry);
    bool chooseFrame(int entry);
    bool chooseBox(int entry);
    bool choosePlay(int entry);
    bool chooseView(int entry);
    void showMenus();
    void showRecent();

    // What it does to the sprite: EditorActs.cpp.
    void copy(const std::string& what);
    void paste();
    void removeChosen();
    void duplicateChosen();
    void addBox();
    void findGrid();
    void cutCells();
    void cutIslands();
    std::string subject() const;

    // Files: EditorFiles.cpp.
    void begin(Project project, const std::string& path, const std::string& sheet);
    void loadSheet(const std::string& path);
    void useSheet(const std::string& path);
    void readSheet();
    void pollSheet();
    void beginSheet(int width, int height);
    void leave(const std::function<void()>& next);
    void save(const std::function<void()>& next = {});
    void saveTo(const std::string& path, const std::function<void()>& next, bool replacesSheet = false);
    std::string sheetName(const std::string& path) const;
    bool hidesSheet(const std::string& path) const;
    void bringSheetTo(const std::string& path);
    void exportAs(const char* extension);
    void exportTo(const std::string& path, const std::string& kind);
    std::string suggestedName(const char* extension) const;
    void browse(KXUIFileBrowserMode mode, const char* extensions, const std::string& name,
                const std::function<void(const std::string&)>& act);

    const std::string _folder;
    Settings _settings, _savedSettings;
    Recovery _recovery;
    Session _session;
    Sheet _sheet;
    Player _player;
    std::string _path;   ///< Of the sprite file, empty for a new one.
    std::string _work;   ///< What unsaved work is kept for: the file that was opened, or saved.
    std::string _onDisk; ///< What that file held when it was opened or saved.

    KXUIPanel _panel, _question, _help, _colors, _newSheet;
    KXUIMenuBar _bar;
    SheetView _sheetView{_session, _sheet};
    StageView _stage{_session, _sheet, _player};
    FrameStrip _strip{_session, _sheet, _player};
    KXUISplitPanel _split;
    SidePanel _side{_session, _panel, [this](const std::string& text) { say(text); }};
    KXUIToggleButton _sheetTools[8], _stageTools[2], _play;
    KXUIButton _first, _back, _next, _last;
    KXUIDropDown _speed;
    KXUILabel _status, _place;
    std::unique_ptr<KXUIDialogBox> _dialog; ///< While something is asked.
    KXUIFileBrowser _files;
    KXUIColorPicker _picker;
    KXUIButton _pickerDone, _helpDone, _sheetMake, _sheetCancel;
    KXUILabel _sheetLabels[2];
    KXUISpinBox _sheetSides[2];
    KXUITextArea _helpText;
    KXUILayout _all{KXUIColumn}, _tools{KXUIRow}, _middle{KXUIRow}, _bottom{KXUIRow},
        _colorsLayout{KXUIColumn}, _helpLayout{KXUIColumn}, _sheetLayout{KXUIGrid, 2};

    std::function<void(int)> _answer;
    std::function<void(const std::string&)> _chosenFile;
    Picked _picked = Picked::Nothing;
    bool _showsHelp = false, _asksForSheet = false, _hasQuit = false;
    std::uint64_t _shown = 0, _kept = 0; ///< Versions of the session.
    int _sinceKept = 0;                  ///< Steps.
};
