#pragma once

/// Whether there is a display that windows can be opened on.
bool hasDisplay();
/// Has the library draw where nobody sees it, where the system can do that; elsewhere in a hidden window.
void drawUnseen();
