#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The colours that widgets begin with.

/// Sets the colours that widgets take over when they are constructed.
KX_API void KXSetUIColor(KXColor border, KXColor background, KXColor backgroundInteraction, KXColor selection,
                         KXColor focus, KXColor text);
