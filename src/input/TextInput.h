#pragma once

#include <Kobaltrix/KXTypes.h>

// The platform's text input, which makes text of keys on any layout, with dead keys and input methods. What
// is typed comes with the events of a step.

/// Lets text be typed from now on and shows an on-screen keyboard where there is one. Without a started
/// library it waits for _KXKeepTextInput().
void _KXBeginTextInput();
/// Begins again if the library was stopped and started since. To be called once per logic step.
void _KXKeepTextInput();
/// Ends the platform's text input if it was off before.
void _KXEndTextInput();

/// Tells input methods where the text is that they help to write, in points of the window.
void _KXSetTextInputRect(KXRect rect);
