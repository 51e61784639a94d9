#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// @file
/// A box in which the user looks for a file to open, or says where to save one.

/// What a file is looked for.
enum KXUIFileBrowserMode : int {
    /// To be read: the file must exist.
    KXUIFileBrowserModeOpen = 0,
    /// To be written: the file may be new; one that exists is asked about. Every value other than 0 means
    /// this.
    KXUIFileBrowserModeSave = 1
};

/// A folder's contents, a line to type a name into, and buttons.
///
/// It is hidden, and neither polled nor drawn, until show(); then until the user has chosen or cancelled.
///
/// On top stands the folder's path, each name of which leads to its folder; at the side, where there is room,
/// places: home, desktop, the game's own (addPlace()) and where files were chosen last; and a preview of the
/// picture that is selected. Columns tell size and date, a press on their titles sorts by them, a second one
/// the other way round.
///
/// Folders come first, then files; in each half "b" comes after "A", "10" after "9" and "ä" beside "a". A
/// double click or
/// Return on a folder enters it and on a file chooses it; "Up", and Backspace in the list, go to the folder
/// above. A name is typed as it is, as a path from the folder shown, or as a path from the root; naming a
/// folder enters it. Before a file is saved over, the browser asks once: the button then says "Replace", and
/// no click on the list answers. A name to save under that ends with a dot, or that is all blanks and dots,
/// loses the dot, or is refused.
///
/// The user makes folders and renames what is selected, unless setAllowsChanges() forbids it; the name is
/// typed into the line below, and nothing is ever replaced.
///
/// Keys: Tab changes between list, name and places; Escape cancels, or takes back the question or the new
/// name; F2 renames, F5 reads the folder again; with Control (Command on macOS) N makes a folder, H shows
/// hidden files, and 1, 2, 3 sort by name, size and date. Keys are read as KXUIListBox does, beside the
/// game's own queries, and with the mouse in the order in which all came, also within a step.
///
/// What goes wrong is said in the line above the name: a folder that cannot be read or is no longer there, a
/// file that does not exist, a name that is not UTF-8. Bytes of a name that are no character are shown as
/// question marks, but stay as they are in the path.
///
/// Paths are bytes, as in KXFile.h. Links to folders are followed. A folder is read when it is entered and
/// when refresh() is called. Nothing is thrown but std::bad_alloc when memory is exhausted.
class KX_API KXUIFileBrowser : public _KXUIWidget {
public:
    /// A hidden browser in the user-interface colours.
    KXUIFileBrowser();
    ~KXUIFileBrowser() override;

    /// Shows the browser and gives it the keyboard; what was chosen before is forgotten.
    /// @param mode what a file is looked for.
    /// @param folder where to begin, copied; null for the working directory.
    void show(KXUIFileBrowserMode mode, const char* folder);
    /// The same with a name to begin with, copied; null for none. A file of this name is selected.
    void show(KXUIFileBrowserMode mode, const char* folder, const char* name);
    /// Hides the browser; there is no result.
    void hide();
    /// -1 while the browser is shown, else 0.
    int isShown() const;

    /// Lists only files with certain extensions, in any case. A name to save under that has none of them gets
    /// the first. Folders are always listed, and any name can be typed.
    /// @param extensions copied, for example "png jpg" or "*.tar.gz"; null or empty for every file.
    void setExtensions(const char* extensions);
    /// Lists names that begin with a dot for a non-zero @a shows. The user can change it.
    void setShowsHiddenFiles(int shows);
    /// -1 if names that begin with a dot are listed, else 0.
    int showsHiddenFiles() const;
    /// Adds a place to those at the side, such as the folder of a game's levels. Paths are as in setFolder().
    /// @param name,folder copied. @return -1, or 0 if one of them is null.
    int addPlace(const char* name, const char* folder);
    /// Lets the user make folders and rename files for a non-zero @a allows, as at first, or not, for 0.
    void setAllowsChanges(int allows);
    /// -1 if the user may make folders and rename files, else 0.
    int allowsChanges() const;
    /// Goes to a folder, as the user could. @param folder null for the working directory.
    void setFolder(const char* folder);
    /// Reads the folder again, if the browser is shown.
    void refresh();

    /// The folder shown, from the root. A temporary string; one that is longer than these can be, 1023 bytes,
    /// is the browser's own and valid until it goes to another folder.
    const char* folder() const;
    /// The line above the name, empty if there is nothing to say. A temporary string (so cut to 1023 bytes).
    const char* message() const;
    /// The path that was chosen, from the root; null if the user cancelled or has not chosen yet. A temporary
    /// string; one that is longer than these can be, 1023 bytes, is the browser's own and valid until show().
    const char* path() const;

    /// Takes the user's doing of one logic step in.
    /// @return -1 once, when the user has chosen or cancelled in this call, with path() telling which; else
    /// 0.
    int poll();
    /// Draws the browser into the current target; nothing while it is hidden.
    void draw() override;
    int pollInPanel() override;                      ///< poll().
    int takesKeyboard() const override;              ///< 0: it has the keyboard while it is shown.
    int containsPoint(KXPoint point) const override; ///< 0 while it is not shown.
    KXUIDescription description() const override;    ///< The folder is its value.

    /// Moves the top-left corner, pixels.
    void setOrigin(KXPoint origin) override;
    /// Sets the extent in pixels. Parts that it has no room for are not drawn: 300 by 200 is comfortable,
    /// places appear from a width of 400 on, and the preview from 500.
    void setSize(KXSize size) override;
    /// Gives browser, list, name and buttons a font of their own. See _KXUIWidget::setFont().
    int setFont(const char* path, KXAliasMode mode) override;
    /// Changes the size of that font. See _KXUIWidget::setFontSize().
    int setFontSize(int size) override;
    /// Also for its parts. See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;

    void setBackgroundColor(KXColor color);                      ///< Behind everything.
    void setBackgroundColor(float r, float g, float b, float a); ///< Behind everything.
    /// Of list, name and buttons, and of the scroll bar's knob: call setKnobColor() afterwards.
    void setControlColor(KXColor color);
    void setControlColor(float r, float g, float b, float a); ///< The same, 0.0 to 1.0 a channel.
    /// Of buttons held or on, and of the scroll bar's track: call setTrackColor() afterwards.
    void setDepressedColor(KXColor color);
    void setDepressedColor(float r, float g, float b, float a); ///< The same, 0.0 to 1.0 a channel.
    void setTrackColor(KXColor color);                          ///< Of the scroll bar, behind its knob.
    void setTrackColor(float r, float g, float b, float a);     ///< Of the scroll bar, behind its knob.
    void setKnobColor(KXColor color);                           ///< Of the part of the bar that is dragged.
    void setKnobColor(float r, float g, float b, float a);      ///< Of the part of the bar that is dragged.
    void setBorderColor(KXColor color);                         ///< Around browser, list, name, buttons.
    void setBorderColor(float r, float g, float b, float a);    ///< Around browser, list, name, buttons.
    void setTextColor(KXColor color);                           ///< Of every text.
    void setTextColor(float r, float g, float b, float a);      ///< Of every text.
    void setSelectionColor(KXColor color);                      ///< Behind what is selected.
    void setSelectionColor(float r, float g, float b, float a); ///< Behind what is selected.
    void setFocusColor(KXColor color);                          ///< Around list or name with the keyboard.
    void setFocusColor(float r, float g, float b, float a);     ///< Around list or name with the keyboard.

private:
    struct KX_INTERNAL State;

    std::unique_ptr<State> _state;
};
