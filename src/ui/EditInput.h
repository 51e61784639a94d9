#pragma once

#include <cstdint>

class _KXTextEditing;
struct KXInputEvent;
struct _KXModifiers;

// What widgets that texts are typed into have in common, of one line or of many.

/// Presses in quick succession at one place: the second means a word, the third more.
struct _KXClicks {
    int count = 0;
    /// One more, where the pointer is. @return which it is, 1 to 3.
    int press();

private:
    int _x = 0, _y = 0;
    std::uint32_t _time = 0;
};

/// A cursor that blinks, and is seen at first where it has moved.
class _KXBlink {
public:
    void begin();
    /// Whether it is seen now, at a state of its text.
    bool isOn(std::uint64_t revision);

private:
    std::uint32_t _time = 0;
    std::uint64_t _revision = 0;
};

/// Whether a key means something to such a widget, also with Control or the like: none of its keys is a
/// shortcut of a menu meanwhile.
bool _KXIsEditKey(int key, const _KXModifiers& modifiers);
/// Control, or Command on macOS, with A, C, X, V, Z and Y. @return whether the text changed.
bool _KXUseEditShortcut(_KXTextEditing& edit, const KXInputEvent& key, const _KXModifiers& modifiers,
                        bool isReadOnly);
