#include "Help.h"

const char* helpText() {
    return R"(A first sprite
1. Open a picture (Ctrl+O), or drop one on the window.
2. Find its grid (Ctrl+Shift+G), or type it on the page Grid.
3. Add an animation (Ctrl+Shift+N) and type its name.
4. With Cells (Ctrl+3) drag over cells of the sheet, or cut a frame with Cut (Ctrl+2), or click one with Islands (Ctrl+4).
5. Give the frames their durations in the strip at the bottom, and play them (F8).
6. Add boxes (Ctrl+B), and drag them on the frame.
7. Save (Ctrl+S). The game loads the file; the sheet lies beside it.

Everywhere
Tab and Shift+Tab go from part to part, Alt and an underlined letter opens a menu, F10 goes into the menus.
Everything can be undone (Ctrl+Z) and done again (Ctrl+Y), without end.
Delete deletes what the keyboard is with: frames, the animation or the box. Escape takes back a drag.

Sheet and frame
Wheel: larger and smaller, around the pointer. Middle or right button, or Space and the left one: move the picture.
F3, Shift+F3, Ctrl+F3: the sheet larger, smaller, whole. F4 with the same: the frame.
Arrows move the cursor on the sheet; Return begins a rectangle there, and a second one ends it.
Arrows move the box that is chosen by a pixel, with Shift by eight.

Frames
Click, Ctrl+click and Shift+click choose frames; drag them to another place. The right edge of a frame is its duration.
Arrows go from frame to frame, with Shift they choose more, with Alt they move them. + and - change the duration.
Ctrl+R plays them the other way round, Ctrl+Shift+R adds the way back.

Player
F8 plays and pauses, F7 and F9 go back and forward by a frame, with Shift slower and faster. F6 shows the frames before and after.

What is beside the sprite
The order of the lists, the colours of boxes, the grid and animations without frames are kept in NAME.studio.json, which a game does not need.
)";
}
