#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The displays of the desktop, and the modes that each can be in. Needs the thread that called KXInit(); a
/// recording keeps what is answered.

/// A mode of a display. Its size is in the platform's screen coordinates, as windows have it.
struct KXDisplayMode {
    int width;       ///< Horizontal extent.
    int height;      ///< Vertical extent.
    int refreshRate; ///< Pictures a second; 0 where it is not known.
};

/// A display of the desktop. Rectangles are in the desktop's coordinates, as KXWindow::rect() has them.
struct KXDisplay {
    const char* name;   ///< For people, UTF-8. A temporary string.
    KXRect bounds;      ///< All of it.
    KXRect usable;      ///< Without what the desktop keeps for itself, such as a bar of tasks.
    KXDisplayMode mode; ///< The mode that the desktop has it in.
    int numberOfModes;  ///< How many KXDisplayModeAt() knows.
};

/// How many displays there are; 0 while the library is not initialised.
KX_API int KXNumberOfDisplays();
/// Display number @a index, from 0, as KXWindow::getDisplayIndex() counts them. All zeros, with an empty name
/// and a text in KXError(), if there is none of that number.
KX_API KXDisplay KXDisplayAt(int index);
/// Mode number @a index, from 0, of a display, the largest first. All zeros with a text in KXError() if there
/// is none.
KX_API KXDisplayMode KXDisplayModeAt(int display, int index);
