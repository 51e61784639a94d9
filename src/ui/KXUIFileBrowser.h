#pragma once

#include <Kobaltrix/KXUIFileBrowser.h>

#include "text/RowText.h"
#include "ui/Focus.h"
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
    KXUIToggleButton hidden;
    KXUIListBox list;
    std::string message;
    KXUITextEntry name;
    KXUIButton confirm;
    KXUIButton dismiss;
    KXUIButton* const buttons[4] = {&up, &hidden, &confirm, &dismiss};

    KXColor backgroundColor, borderColor, textColor;
    _KXFittedText folderShown, messageShown;
    KXRect box = KXZeroRect;
    KXRect folderPlace = KXZeroRect, messagePlace = KXZeroRect; ///< Where the texts are.

    bool isShown = false;
    bool saves = false;
    bool nameHadFocus = false; ///< And not the list, when one of the two had it last.
    std::string folder = "/";
    _KXFileFilter filter;
    std::vector<_KXFolderListing::Entry> entries; ///< One for each row of the list.

    std::string picked;      ///< The bytes of the name that was put into the line,
    std::string pickedShown; ///< and what the line has made of them: it holds text only.
    std::string asked;       ///< The path whose replacing is asked about, empty for none.
    std::string chosen;
    bool hasChosen = false;
    bool cancelled = false;
    const KXUIButton* pressedButton = nullptr;

    void caption();
    int fitLine();
    void layOut();
    void printTexts(KXFont& font);
    int read(const std::string& select);
    void enter(const std::string& path, const std::string& select);
    void goUp();
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
    void hearStep();
    void hearParts(int toldByList, int toldByName);
    void skipStep();
    void keepFocus(bool pressedHere);

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    bool keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
};
