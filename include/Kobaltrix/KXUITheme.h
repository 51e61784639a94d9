#pragma once

#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

#include <memory>

class KXFont;
class KXTexture;

/// @file
/// What all widgets have in common in their looks, in one struct. What a widget can be given by itself, its
/// colours and its font, stays its own.
///
/// @code
/// KXUISetTheme(KXUIDarkTheme()); // all widgets, those that exist too
/// @endcode

/// How the captions of buttons and menus and the messages of dialog boxes come to their places.
enum KXUICaptions : int {
    /// As KXFont::print() does it: one line with its top left at the padding, as long as it is, used as a
    /// format without arguments.
    KXUICaptionsPrinted = 0,
    /// As a KXTextLayout does it: shaped in any script, with the font's fallbacks, and never used as a
    /// format, so a percent sign is itself. Captions stand with their capitals in the middle of the height
    /// and end with an ellipsis where their widget is too narrow: those of buttons in the middle, those of
    /// menus at the left. Messages of dialog boxes are wrapped, and the buttons stand in a row within the
    /// box. A font's rendering offset does not count. Drawing such a text for the first time asks for memory,
    /// as #KXTextLayout does; frames in which nothing changes do not, and measure nothing.
    KXUICaptionsLaidOut = 1
};

/// How tooltips look, and when; see _KXUIWidget::setTooltip().
struct KXUITooltipTheme {
    int delay = 500;   ///< Milliseconds that the pointer rests before one is shown.
    float width = 240; ///< What lines are wrapped at, and no more than there is room; 0 for that.
    KXColor background = {1, 1, 0.88f, 1}; ///< Of the box.
    KXColor border = {0, 0, 0, 1};         ///< Around it.
    KXColor text = {0, 0, 0, 1};           ///< Outside of colour spans.
};

/// What widgets are made of.
enum KXUIPart : int {
    KXUIPartPanel = 0, ///< What others stand on: dialog boxes, file browsers, panels with a background.
    KXUIPartButton,    ///< Buttons of every kind, the tab that is chosen.
    KXUIPartField,     ///< What holds a text or rows: entries, lists, check boxes, tables.
    KXUIPartMenu,      ///< Columns of menus and of drop-downs.
    KXUIPartHeader,    ///< Menu bars, tabs, the titles of columns.
    KXUIPartTrack,     ///< Of sliders, scroll bars and bars of progress.
    KXUIPartKnob,      ///< That is dragged along a track.
    KXUIPartSelection, ///< Rows that are chosen, the entry of a menu that is lit, what is done.
    KXUIPartCount      ///< How many there are.
};

/// What a part may be at the moment; several of them together.
enum KXUIPartState : unsigned {
    KXUIPartNormal = 0,  ///< Nothing special.
    KXUIPartHovered = 1, ///< The pointer is over it.
    KXUIPartPressed = 2, ///< It is held.
    KXUIPartOn = 4,      ///< It is on, open or chosen.
    KXUIPartFocused = 8  ///< It has the keyboard.
};

/// The colours of all widgets, instead of those that each of them has.
struct KXUIPalette {
    KXColor panel;         ///< Of #KXUIPartPanel.
    KXColor button;        ///< Of #KXUIPartButton and #KXUIPartKnob,
    KXColor buttonHovered; ///< with the pointer over it,
    KXColor buttonPressed; ///< and held or on.
    KXColor field;         ///< Of #KXUIPartField.
    KXColor menu;          ///< Of #KXUIPartMenu.
    KXColor header;        ///< Of #KXUIPartHeader.
    KXColor track;         ///< Of #KXUIPartTrack.
    KXColor border;        ///< Around them.
    KXColor text;          ///< On them.
    KXColor faintText;     ///< Of placeholders, shortcuts and numbers of lines.
    KXColor selection;     ///< Of #KXUIPartSelection,
    KXColor selectedText;  ///< and of the text on it.
    KXColor focus;         ///< Around what has the keyboard.
};

/// A picture that a part is drawn with: its corners as they are, edges and middle stretched.
struct KXUISkin {
    KXTexture* texture = nullptr;       ///< Not owned, it must live as long as the theme; null for none.
    KXRect source = {{0, 0}, {-1, -1}}; ///< The part of it, as KXDrawOptions::source has it.
    float corner = 4;                   ///< Width and height of a corner, in pixels of the texture.
    float scale = 1;                    ///< How large corners are drawn: 2 is twice their size.
};

/// The pictures of a part. One that has none is drawn as the next that has: pressed, on and hovered as
/// normal.
struct KXUIPartSkins {
    KXUISkin normal;  ///< As it is mostly.
    KXUISkin hovered; ///< With the pointer over it.
    KXUISkin pressed; ///< Held, or on.
};

/// How widgets look. What it begins with is how they look without a theme.
struct KXUITheme {
    KXUICaptions captions = KXUICaptionsPrinted; ///< How captions and messages come to their places.
    float disabledOpacity = 0.4f;                ///< What is left of the opacity of disabled widgets.
    KXUITooltipTheme tooltip;                    ///< How tooltips look.
    /// Non-zero for the palette's colours instead of those that each widget has.
    int32_t usesPalette = 0;
    KXUIPalette palette = {};           ///< The colours of all widgets.
    KXUIPartSkins skins[KXUIPartCount]; ///< Pictures instead of boxes, by #KXUIPart.
    float ringWidth = 2;                ///< Pixels of the ring around what has the keyboard.
    /// The font of widgets that have none of their own, instead of that of KXUISetGlobalFont(), those that
    /// exist, too; null for none. Not owned: one of KXCachedFont(), and no more used once the cache is
    /// cleared.
    KXFont* font = nullptr;
    /// What _KXUIWidget::KXUIWidgetInnerPadding is set to with the theme; negative leaves it.
    KXSize padding = {-1, -1};
};

/// Dark texts on light grey, captions laid out.
KX_API KXUITheme KXUILightTheme();
/// Light texts on dark grey, captions laid out.
KX_API KXUITheme KXUIDarkTheme();
/// White and yellow on black, with strong borders, for those who see little.
KX_API KXUITheme KXUIHighContrastTheme();

/// Gives all widgets a theme. Those that exist follow when they are drawn, but sizes that were fitted to
/// texts stay, but for those of widgets in a KXUIPanel. @param theme copied.
KX_API void KXUISetTheme(const KXUITheme& theme);
/// The theme that was set last.
KX_API KXUITheme KXUICurrentTheme();

struct _KXUIThemeParts;

/// A theme in a file, with the pictures that it needs.
///
/// @code
/// KXUIThemeFile file;
/// if (file.load("themes/wood.json"))
///     KXUISetTheme(file.theme());
/// @endcode
///
/// The file is JSON; whatever it does not name is as in its base:
///
///     {"base": "dark", "font": {"file": "wood.ttf", "size": 14}, "padding": [6, 4], "ring": 2,
///      "disabledOpacity": 0.4, "tooltipDelay": 500,
///      "colors": {"panel": "#3A2A1A", "selectedText": "#FFFFFF"},
///      "skins": {"image": "wood.png", "corner": 6, "scale": 1,
///                "button": {"normal": [0, 0, 24, 24], "hovered": [24, 0, 24, 24], "corner": 8}}}
///
/// "base" is "light", "dark" or "contrast". Colours are written as in the example, or with their opacity
/// before them (`80FF0000` is a half red), and have the names of #KXUIPalette; parts of "skins" are "panel",
/// "button", "field", "menu", "header", "track", "knob" and "selection", each with rectangles of the image,
/// x, y, width and height in pixels. Paths begin at the file's folder.
class KX_API KXUIThemeFile {
public:
    /// The light theme, until load().
    KXUIThemeFile();
    /// Lets the pictures go; a theme that is set and has some of them is drawn without them from then on.
    ~KXUIThemeFile();
    KXUIThemeFile(const KXUIThemeFile&) = delete;
    KXUIThemeFile& operator=(const KXUIThemeFile&) = delete;

    /// Reads a file; needs the context of a window, as textures do. @return -1; 0 with the theme as it was,
    /// and in KXError() where in the file what is wrong.
    int load(const char* path);
    /// The theme.
    const KXUITheme& theme() const;

private:
    std::unique_ptr<_KXUIThemeParts> _parts;
};
