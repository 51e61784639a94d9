#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The colours that widgets begin with.

/// The colours of one widget, as widgets take them that have one setter for all; a theme with a palette has
/// them in its own.
struct KXUIColors {
    KXColor border;      ///< Around it.
    KXColor background;  ///< Of its box.
    KXColor interaction; ///< Of what is held, and of tracks.
    KXColor selection;   ///< Of what is chosen or done.
    KXColor focus;       ///< Around what has the keyboard.
    KXColor text;        ///< Of texts and marks.
};

/// Sets the colours that buttons, sliders, lists, text entries and file browsers take over when they are
/// constructed; those that exist keep theirs. Menus and dialog boxes begin with colours of their own.
KX_API void KXSetUIColor(KXColor border, KXColor background, KXColor backgroundInteraction, KXColor selection,
                         KXColor focus, KXColor text);
/// Those colours.
KX_API KXUIColors KXCurrentUIColors();
