#pragma once

#include <Kobaltrix/KXUIColors.h>

// The colours that widgets copy when they are constructed; KXSetUIColor replaces them.
inline constinit KXColor _KXUIBorderColor = {0, 0, 0, 1};
inline constinit KXColor _KXUIBackroundColor = {0.5f, 0.5f, 0.5f, 1};
inline constinit KXColor _KXUIBackgroundColor_Interaction = {0.25f, 0.25f, 0.25f, 1};
inline constinit KXColor _KXUISelectionColor = {0.25f, 0.25f, 1, 1};
inline constinit KXColor _KXUIFocusColor = {0.75f, 0, 0.75f, 1};
inline constinit KXColor _KXUITextColor = {1, 1, 1, 1};
