#pragma once

#include <Kobaltrix/KXUIFileBrowser.h>

#include "text/RowText.h"
#include "util/FolderListing.h"

#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUITextEntry.h>

#include <string>
#include <vector>

struct KXUIFileBrowser::State {
    State();

    // What the user sees, top to bottom.
    KXUIButton up;
    KXUIToggleButton hidden;
    KXUIListBox list;
    std::string message;
    KXUITextEntry name;
    KXUIButton confirm;
    KXUIButton cancel;
    KXUIButton* const buttons[4] = {&up, &hidden, &confirm, &cancel};

    KXColor backgroundColor, borderColor, textColor;
    _KXFittedText folderShown, messageShown;
    KXRect box = KXZeroRect;
    // Where texts are, in pixels.
    int folderLeft = 0, folderRight = 0, folderTop = 0;
    int messageLeft = 0, messageRight = 0, messageTop = 0;

    bool isShown = false;
    bool saves = false;
    bool nameHadFocus = false; ///< When one of the parts had it last.
    std::string folder = "/";
    _KXFileFilter filter;
    std::vector<_KXFolderListing::Entry> entries; ///< One for each row of the list.

    std::string picked;      ///< The bytes of the name that was put into the line,
    std::string pickedShown; ///< and what the line has made of them: it holds text only.
    std::string asked;       ///< The path whose replacing is asked about, empty for none.
    std::string chosen;
    bool hasChosen = false;

    void caption();
    void layOut();
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
    bool pollKeys();
    void pollParts();
    void keepFocus(bool pressedHere);
};
