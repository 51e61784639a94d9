#pragma once

#include <Kobaltrix/KXUIFileBrowser.h>

#include "text/RowText.h"
#include "ui/Focus.h"
#include "ui/PathCrumbs.h"
#include "ui/PicturePreview.h"
#include "util/FolderListing.h"

#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUITextEntry.h>

#include <string>
#include <vector>

struct KXUIFileBrowser::State : _KXFocus, _KXFocus::KeyFilter {
    explicit State(KXUIFileBrowser& browser);

    KXUIFileBrowser& browser;

    // What the user sees, top to bottom.
    KXUIButton up;
    _KXPathCrumbs crumbs;
    KXUIButton newFolder;
    KXUIToggleButton hidden;
    KXUIListBox places;
    KXUIButton columns[3]; ///< Above the list: name, size and date, in the order of _KXListingOrder.
    KXUIListBox list;
    _KXPicturePreview preview;
    std::string previewFolder, shownPreview, previewPath; ///< Of what was selected when it was drawn last.
    std::string message;
    KXUITextEntry name;
    KXUIButton confirm;
    KXUIButton dismiss;
    KXUIButton* const buttons[8] = {&up,         &newFolder,  &hidden,  &columns[0],
                                    &columns[1], &columns[2], &confirm, &dismiss};

    KXColor backgroundColor, borderColor, textColor;
    _KXFittedText messageShown;
    KXRect box = KXZeroRect;
    KXRect crumbsPlace = KXZeroRect, messagePlace = KXZeroRect, previewPlace = KXZeroRect;

    bool isShown = false;
    bool saves = false;
    bool nameHadFocus = false; ///< And not the list, when one of the two had it last.
    std::string folder = "/";
    _KXFileFilter filter;
    _KXListingOrder order = _KXListingOrder::Name;
    bool isReversed = false;
    std::vector<_KXFolderListing::Entry> entries; ///< One for each row of the list.

    struct Place {
        std::string name, folder;
    };
    std::vector<Place> ownPlaces;          ///< Of the game.
    std::vector<std::string> placeFolders; ///< One for each row of the places.
    bool allowsChanges = true;

    enum class Task { Choose, MakeFolder, Rename };
    Task task = Task::Choose;
    std::string renamed;    ///< The name of what is being renamed,
    std::string nameBefore; ///< and what the line held before its new one.

    std::string picked;      ///< The bytes of the name that was put into the line,
    std::string pickedShown; ///< and what the line has made of them: it holds text only.
    std::string asked;       ///< The path whose replacing is asked about, empty for none.
    std::string chosen;
    bool hasChosen = false;
    bool cancelled = false;
    const KXUIButton* pressedButton = nullptr;
    std::string pressedCrumb;
    bool wasPressed = false; ///< By the event that is being heard, anywhere in the browser.

    void caption();
    int fitLine();
    void layOutColumns(int left, int top, int right, int line);
    void drawSortMark();
    void drawPreview();
    void layOut();
    void printTexts(KXFont& font);
    int read(const std::string& select);
    void enter(const std::string& path, const std::string& select);
    void enterPart(const std::string& path);
    void goUp();
    void listEntries(const std::string& select);
    void sortBy(_KXListingOrder by);
    void listPlaces();
    void beginTask(Task begun);
    void endTask();
    void doTask();
    std::string taskFails(const std::string& path) const;
    void selectStem();
    void putName(const std::string& bytes);
    std::string nameMeant() const;
    void selected(int row);
    void dropQuestion();
    void pressed();
    void open(const std::string& path);
    void save(std::string path);
    void choose(const std::string& path);
    bool isDone() const { return hasChosen || cancelled; }
    void cancel();
    void click(const KXUIButton& button);
    bool useShortcut(int key);
    void goToPlace(int row);
    void focusNext(bool back);
    void hearStep();
    void hearParts(int toldByList, int toldByName);
    void skipStep();
    void keepFocus();

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    bool keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    bool needsAllKeys() const override { return true; }
};
