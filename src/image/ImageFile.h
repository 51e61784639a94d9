#pragma once

#include "image/Surface.h"

#include <SDL_rwops.h>

#include <cstddef>
#include <cstdint>
#include <string>

/// How many pixels an image may have: see KXSetMaximumImagePixels().
std::uint32_t _KXMaximumImagePixels();

/// What came of decoding an image.
struct _KXDecodedImage {
    _KXSurface surface; ///< In whatever format the file has. Null if it cannot be read,
    bool isTooLarge;    ///< here for having more pixels than are allowed; else the platform knows why.
};
_KXDecodedImage _KXDecodeImageFile(const char* path);
_KXDecodedImage _KXDecodeImage(const void* bytes, std::size_t size);

/// Encodes a picture in memory.
/// @param encode IMG_SavePNG_RW() or SDL_SaveBMP_RW().
/// @param reason why it failed.
bool _KXEncodeImage(SDL_Surface& picture, int (*encode)(SDL_Surface*, SDL_RWops*, int), std::string& bytes,
                    std::string& reason);

/// Encodes a picture and gives a file that content, whole or not at all.
bool _KXStoreImage(const char* path, SDL_Surface& picture, int (*encode)(SDL_Surface*, SDL_RWops*, int),
                   std::string& reason);
