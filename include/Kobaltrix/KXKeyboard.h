#pragma once

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXPlatform.h>

/// @file
/// The keyboard, polled by key number once per logic step.
///
/// There are two ways of asking. KXKeyHeld(), KXKeyWentDown(), KXKeyWentUp() and KXKeyTyped() answer for the
/// step that is under way, whoever asks and however often: a key that went down and up again between two
/// steps went down and went up in the next, and nothing is lost or seen twice. Between steps nothing goes
/// down or up. KXKey() and its kind report a press to the first who asks, and miss one that was over before
/// the step began.
///
/// Keys have numbers (KXKeyNumber) for what they are labelled with, and positions (KXKeyPosition) for where
/// they lie. When a window loses the keyboard, all that is held goes up.
///
/// Keys change only while KXLogicLoop() reads events. A number that is no key reads as not held. A press has
/// one report, shared by all who ask for it once or with repeat; lists and text entries have another.

/// -1 while the key is held, else 0. @param key any number of KXKeyNumber.
KX_API int KXKeyHeld(int key);
/// How often the key went down in this step: mostly 0 or 1.
KX_API int KXKeyWentDown(int key);
/// How often the key came up in this step.
KX_API int KXKeyWentUp(int key);
/// How often the key was typed in this step: its presses, and what it repeats while it is held, first after
/// 500 ms, then every 33 ms. Time is counted in steps, so a recorded game repeats as the played one did.
KX_API int KXKeyTyped(int key);

/// -1 while the key in that place is held, else 0. @param position a KXKeyPosition.
KX_API int KXPositionHeld(int position);
/// How often the key in that place went down in this step.
KX_API int KXPositionWentDown(int position);
/// How often the key in that place came up in this step.
KX_API int KXPositionWentUp(int position);

/// The key that the user's layout has in that place, 0 for none: what to show for "press W to go up".
KX_API int KXKeyAtPosition(int position);
/// The key's name, another for each key: that of KXKeyToString(), but ";" for the semicolon and "Num Pad 0"
/// to "Num Pad 9"; the character for keys that type others, such as "ö". "Unknown" for a number that is no
/// key. A temporary string.
KX_API const char* KXKeyName(int key);
/// The key with that name (see KXKeyName()), 0 for none.
KX_API int KXKeyFromName(const char* name);

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
