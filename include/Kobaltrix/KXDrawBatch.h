#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <cstddef>

/// @file
/// Draw batches, counters of what drawing costs, and the memory of glyphs.
///
/// Without a batch every draw is complete when its call returns. Between KXBeginDrawBatch() and
/// KXEndDrawBatch() textures, sprites, shapes, text and widgets are collected in call order instead, and
/// leave in as few draw calls as that order allows; the pixels are the same. A game that draws thousands of
/// things a frame wants a batch.
///
/// A game that mixes in its own OpenGL inside a batch calls KXFlushDrawBatch() before any OpenGL call that
/// draws or changes state. What it has changed (matrices, blending, a program) holds for everything that is
/// collected from then on, and must stay until that has left.
///
/// Everything in the library that depends on what was drawn, or changes what collected draws depend on, lets
/// the batch out by itself: reading pixels, another target, clip, mode or window, new contents of a texture,
/// its deletion, KXTexture::bind(), text of polygons, the swap and the end of the frame. Needs the thread
/// that owns the OpenGL context.

/// Begins to collect. Batches nest: only the outermost end lets them out.
///
/// A batch that is never ended leaves with every swap and at KXPostLogicLoop() and goes on: a game may begin
/// one at its start and have all its frames batched.
KX_API void KXBeginDrawBatch();
/// Ends a batch; the outermost end draws what was collected. Without a batch it does nothing.
KX_API void KXEndDrawBatch();
/// Draws what was collected and goes on collecting. Without a batch it does nothing.
KX_API void KXFlushDrawBatch();

/// Why collected draws had to leave.
enum KXDrawFlushReason : int {
    KXDrawFlushEnd = 0,           ///< KXEndDrawBatch().
    KXDrawFlushRequest = 1,       ///< KXFlushDrawBatch(), KXTexture::bind() or a matrix operation.
    KXDrawFlushFull = 2,          ///< As much was collected as there is room for.
    KXDrawFlushTarget = 3,        ///< Another target or window.
    KXDrawFlushClip = 4,          ///< Another clip.
    KXDrawFlushProjection = 5,    ///< Another rendering mode of the window.
    KXDrawFlushTextureChange = 6, ///< New contents of a texture, or its deletion.
    KXDrawFlushRead = 7,          ///< Pixels were read.
    KXDrawFlushText = 8,          ///< Text of #KXAliasModePolygon, or while the game blends in its own way.
    KXDrawFlushSwap = 9,          ///< KXWindow::swapBuffers().
    KXDrawFlushFrame = 10,        ///< KXPostLogicLoop().
    KXDrawFlushClear = 11,        ///< KXClear().
    KXDrawFlushReasonCount = 12   ///< How many reasons there are.
};

/// What drawing has cost since a swap. Text of #KXAliasModePolygon counts in the flushes only.
struct KXDrawStatistics {
    int quads;          ///< Rectangles, textured or filled, each triangle of a filled shape, each glyph.
    int lines;          ///< Line segments.
    int drawCalls;      ///< Draw calls of OpenGL, each glBegin() counted as one.
    int textureBinds;   ///< Textures bound to draw with.
    int textureUploads; ///< Textures and glyphs handed to OpenGL, and textures cleared.
    int blendChanges;   ///< How often blending was changed for a #KXBlendMode; each begins a draw call.
    int shaderChanges;  ///< How often a shader, or its values, were set; each begins a draw call.
    int culled;         ///< Quads, lines and shapes left out of a batch because a camera does not show them.
    int glyphs;         ///< Glyphs of #KXAliasModeTexture.
    int flushes;        ///< How often collected draws left.
    int flushesBecause[KXDrawFlushReasonCount]; ///< The same for each #KXDrawFlushReason.
};

/// The counters since the last swap of any window.
KX_API KXDrawStatistics KXCurrentDrawStatistics();
/// The counters between the last two swaps: a whole frame.
KX_API KXDrawStatistics KXLastDrawStatistics();

/// The glyphs that are kept for text of #KXAliasModeTexture and of layouts, in one OpenGL context: those of a
/// window and its textures.
struct KXGlyphStatistics {
    int glyphs;        ///< How many are kept, of all fonts and sizes.
    int pages;         ///< Textures that they share.
    std::size_t bytes; ///< What these take of the driver's memory.
    int made;          ///< How many were made since the window was, each again after it was dropped counted.
    int dropped;       ///< How many have left, for want of memory or with their font.
};

/// The glyphs of the context that is current; all zeros without one.
KX_API KXGlyphStatistics KXCurrentGlyphStatistics();
/// Sets how much memory glyphs may take in each context, 16 MiB unless it is set. Beyond it those leave that
/// were not used for longest, page by page, and are made again when they are wanted. What one frame uses is
/// kept, however much that is; a frame ends with KXWindow::swapBuffers().
KX_API void KXSetGlyphMemory(std::size_t bytes);
