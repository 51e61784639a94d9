#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// Pictures and sprites that are loaded again while the game runs: who draws them sees at once what they look
/// like in it.

/// Has pictures and sprites loaded again when their files change (any value but 0), or not (0, as at the
/// start, which costs nothing). For the time in which a game is made; to be called before they are loaded.
///
/// It counts for the textures of the texture cache, those of sprites and widgets among them, and for sprites
/// that KXSprite::load() has read, with their copies and clones. A texture stays the same object, tint,
/// filter and wrap included, but for its size. A sprite takes animations and boxes of the file in place of
/// its own, in its poll() or draw(), and goes on with the animation and the frame on show as far as they are
/// still there; a texture name that the game has set stays, and clones stay without boxes.
///
/// KXPreLogicLoop() looks at times and sizes of the files, four times a second by the library's clock. A file
/// is loaded when it has stayed as it is from one look to the next. One that is gone, cut short or no picture
/// or sprite at all leaves what was loaded, with a text in KXError(), until it changes once more; and so does
/// a sprite whose sheet cannot be loaded.
///
/// While a recording is written or replayed nothing is loaded again: a recording does not hold the game's
/// files. For the thread that runs the logic loop.
KX_API void KXReloadChangedFiles(int reload);
