#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// Textures shared by path.

class KXTexture;

/// The texture of an image file, loaded once for each window (the current one counts).
///
/// Paths are compared byte by byte: "a.png" and "./a.png" are two entries. The cache owns the texture: never
/// delete it, and do not use it after KXTextureCachePurge(). Throws std::bad_alloc if @a path is null or the
/// file cannot be loaded; the cache is then unchanged.
KX_API KXTexture* KXTextureCacheLoad(const char* path);

/// Deletes every cached texture. KXDeInit() does it too.
KX_API void KXTextureCachePurge();
