#pragma once

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUITheme.h>

// How the parts of widgets look: in the theme's pictures or palette, or else in the widget's own colours;
// dimmed where the widget that is being drawn is disabled.

/// What a part is drawn in where it has no picture.
struct _KXPartColors {
    KXColor fill, border;
};
_KXPartColors _KXColorsOf(KXUIPart part, unsigned states, const KXUIColors& own);
/// Draws a box of a part.
/// @param states several of KXUIPartState. @param own the widget's colours, for where no theme has others.
void _KXDrawPart(KXUIPart part, KXRect box, unsigned states, const KXUIColors& own);
/// The colour of texts and marks on a part.
KXColor _KXPartText(KXUIPart part, unsigned states, const KXUIColors& own);
/// The colour of what is less important than a text; @a own is the widget's for that.
KXColor _KXFaintText(KXColor own);
/// The colour of a text on the panel, or a widget's own.
KXColor _KXPanelText(KXColor own);
/// The ring around what has the keyboard. @param view what it is drawn within, null for everything.
void _KXDrawFocusRing(KXRect box, const KXRect* view, const KXUIColors& own);
