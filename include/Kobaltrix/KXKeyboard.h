#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The keyboard, polled by key number once per logic step.
///
/// Key numbers: letters A to Z are 1 to 26, Return 53, Tab 54, Delete 55, Backspace 56, quote 57, comma 58,
/// minus 59, period 60, slash 61, backslash 62, colon 63, semicolon 64, parentheses 65 and 66, brackets 67
/// and 68, Escape 69, back quote 70, digits 0 to 5 are 71 to 76 and 6 to 9 are 78 to 81, key pad 0 to 9 are
/// 82 to 91, key pad . / * - + Enter = are 92 to 98, Up 99, Right 100, Left 101, Down 102, Home 103, End 104,
/// Page Up 105, Page Down 106, F1 to F15 are 107 to 121, shift 122 and 123, alt 124 and 125 (left, right),
/// Num Lock 126, Caps Lock 127, Scroll Lock 128, super 129 and 130 (never set), right command 131, left
/// command 132, Space 133, equals 134, control 135 and 136 (left, right).
///
/// Keys change only while KXLogicLoop() reads events. A number that is no key reads as not held. A press has
/// one report, shared by all who ask for it once or with repeat; lists and text entries have another.

/// -1 while the key is held, else 0.
KX_API int KXKey(int key);
/// With a non-zero @a once: -1 the first time it is asked while the key is held, then 0 until the key was
/// released. With 0: -1 while the key is held.
KX_API int KXKey(int key, int once);
/// Like KXKey(key, -1), but a key that stays held reports again, on every call, once the time of 30 logic
/// steps has passed since the report: 480 ms at the default speed. Time is that of the frame's
/// KXPreLogicLoop(), so steps that are caught up with in one frame count for nothing.
KX_API int KXKeyWithDelayedRepeat(int key);
/// The lowest number of a held key, 0 if none is held.
KX_API int KXKeyPressed();
/// Forgets every key, as if all had been released. One that stays down counts as pressed again when the
/// platform repeats it.
KX_API void KXUnsetKeys();
/// The key's display name, "Unknown" for a number that is no key. The semicolon is called ":" like the colon,
/// and the key pad's digits like the others. A constant text.
KX_API const char* KXKeyToString(int key);
