#pragma once

#include <SDL_surface.h>

#include <memory>

struct _KXFreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
/// An image in memory that frees itself.
using _KXSurface = std::unique_ptr<SDL_Surface, _KXFreeSurface>;
