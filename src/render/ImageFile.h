#pragma once

#include <SDL_rwops.h>
#include <SDL_surface.h>

#include <string>

/// Encodes a picture in memory and gives a file that content, whole or not at all.
/// @param encode IMG_SavePNG_RW() or SDL_SaveBMP_RW().
/// @param reason why it failed.
bool _KXStoreImage(const char* path, SDL_Surface& picture, int (*encode)(SDL_Surface*, SDL_RWops*, int),
                   std::string& reason);
