#pragma once

#include <Kobaltrix/KXTypes.h>

#include <cstddef>
#include <string>
#include <string_view>

// What the user types, as the platform understands it: any keyboard layout, dead keys and input methods. It
// comes with the events of a logic step, and goes to whoever has the keyboard.

/// What was typed and not taken yet. Texts end with zeros, so that equal states compare equal.
struct _KXTextInputState {
    // No more is typed between two logic steps; if no one reads, the rest is dropped.
    char typed[4096] = {};
    std::size_t typedSize = 0;
    char composition[1024] = {};

    bool operator==(const _KXTextInputState&) const = default;
};

inline constinit _KXTextInputState _KXTextInput;

/// Takes text over that was typed. What is typed while nobody has the keyboard, or with a shortcut, is
/// dropped.
void _KXSetTypedText(std::string_view text);
/// Takes over what an input method composes.
void _KXSetComposedText(std::string_view text);

/// Begins to collect what is typed from now on and shows an on-screen keyboard where there is one. Without a
/// started library it waits for _KXKeepTextInput().
void _KXBeginTextInput();
/// Begins again if the library was stopped and started since. To be called once per logic step.
void _KXKeepTextInput();
/// Stops collecting, and the platform's text input too if it was off before.
void _KXEndTextInput();

/// What was typed since the last call, in UTF-8.
std::string _KXTakeTypedText();
/// What an input method is composing but has not typed yet; mostly empty.
std::string _KXComposedText();
/// Tells input methods where the text is that they help to write, in points of the window.
void _KXSetTextInputRect(KXRect rect);
