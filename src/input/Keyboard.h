#pragma once

#include "core/ground/LogicClock.h"

#include <Kobaltrix/KXKeyboard.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

inline constexpr int _KXKeyCount = KXKeyRightControl + 1; ///< Of the tables, in which 0 is no key.

/// All that is known of the keyboard; tables are indexed by key number.
struct _KXKeyboardState {
    std::int32_t held[_KXKeyCount] = {};          ///< -1 while held.
    std::int32_t toldGame[_KXKeyCount] = {};      ///< -1 once the game was told of the press.
    std::int32_t toldTextEntry[_KXKeyCount] = {}; ///< The same for the text-entry widgets.
    std::int32_t toldTime[_KXKeyCount];           ///< Logic time (ms) of the report.
    int modifiers = 0;                            ///< The platform's bits, as the last key event had them.

    constexpr _KXKeyboardState() { std::fill(std::begin(toldTime), std::end(toldTime), _KXNeverReported); }
    bool operator==(const _KXKeyboardState&) const = default;
};

inline constinit _KXKeyboardState _KXKeyboard;

inline constinit std::int32_t (&_KXKeys)[_KXKeyCount] = _KXKeyboard.held;
inline constinit std::int32_t (&_KXKeysDown)[_KXKeyCount] = _KXKeyboard.toldGame;
inline constinit std::int32_t (&_KXKeysTextEntryDown)[_KXKeyCount] = _KXKeyboard.toldTextEntry;
inline constinit std::int32_t (&_KXKeysDownTime)[_KXKeyCount] = _KXKeyboard.toldTime;

/// Forgets every key.
void _KXInitKeys();
/// Stores @a value as the held state of the key that @a keycode (the platform's) sets; others are ignored.
void _KXSetKeyToValue(int keycode, int value);
/// A key went down.
void _KXSetKey(int keycode);
/// A key came up. Clears the reported state of every key that is not held, also of keys whose release was
/// lost.
void _KXUnsetKey(int keycode);
/// Whether what is typed now is no text but a shortcut. On some layouts Control and Alt make AltGr, which
/// types; modifiers are taken as the last key event had them.
bool _KXIsShortcutHeld();

/// What KXKeyName() gives; it throws where that is null.
std::string _KXKeyNameText(int key);

/// The one query behind all others. @a downTable says who asks: the game or the text-entry widgets.
int _KXKey(int key, int once, std::int32_t* downTable, int repeat);
/// KXKey() for the text-entry widgets: does not consume the press for the game.
int _KXKeyTextEntry(int key, int once);
