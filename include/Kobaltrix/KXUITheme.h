#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// What all widgets have in common in their looks, in one struct. What a widget can be given by itself, its
/// colours and its font, stays its own.
///
/// @code
/// KXUITheme theme;
/// theme.captions = KXUICaptionsLaidOut;
/// KXUISetTheme(theme); // before widgets are made
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

/// How widgets look. What it begins with is how they look without a theme.
struct KXUITheme {
    KXUICaptions captions = KXUICaptionsPrinted; ///< How captions and messages come to their places.
    float disabledOpacity = 0.4f;                ///< What is left of the opacity of disabled widgets.
    KXUITooltipTheme tooltip;                    ///< How tooltips look.
};

/// Gives all widgets a theme. Those that exist follow when they are drawn, but sizes that were fitted to
/// texts stay, so set it before widgets are made. @param theme copied.
KX_API void KXUISetTheme(const KXUITheme& theme);
/// The theme that was set last.
KX_API KXUITheme KXUICurrentTheme();
