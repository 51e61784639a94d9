#pragma once

#include <Kobaltrix/KXKeyboard.h>

#include <cstdint>

inline constexpr int _KXKeyCount = 137; ///< Table size: keys are numbered 1 to 136.

inline constinit std::int32_t _KXKeys[_KXKeyCount] = {};     ///< -1 while held.
inline constinit std::int32_t _KXKeysDown[_KXKeyCount] = {}; ///< -1 once the game was told of the press.
inline constinit std::int32_t _KXKeysTextEntryDown[_KXKeyCount] =
    {};                                                          ///< The same for the text-entry widgets.
inline constinit std::int32_t _KXKeysDownTime[_KXKeyCount] = {}; ///< Logic time (ms) of the report.

/// Forgets every key.
void _KXInitKeys();
/// Stores @a value as the held state of the key that @a keycode (the platform's) sets; others are ignored.
void _KXSetKeyToValue(int keycode, int value);
/// A key went down.
void _KXSetKey(int keycode);
/// A key came up. Clears the reported state of every key that is not held, also of keys whose release was
/// lost.
void _KXUnsetKey(int keycode);
/// The one query behind all others. @a downTable says who asks: the game or the text-entry widgets.
int _KXKey(int key, int once, std::int32_t* downTable, int repeat);
/// KXKey() for the text-entry widgets: does not consume the press for the game.
int _KXKeyTextEntry(int key, int once);
