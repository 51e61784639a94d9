#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The colours that widgets begin with.

/// Sets the colours that buttons, sliders, lists, text entries and file browsers take over when they are
/// constructed; those that exist keep theirs. Menus and dialog boxes begin with colours of their own.
KX_API void KXSetUIColor(KXColor border, KXColor background, KXColor backgroundInteraction, KXColor selection,
                         KXColor focus, KXColor text);
