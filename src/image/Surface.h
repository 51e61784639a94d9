#pragma once

#include <SDL_surface.h>

#include <memory>

class KXImage;

struct _KXFreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
/// An image in memory that frees itself.
using _KXSurface = std::unique_ptr<SDL_Surface, _KXFreeSurface>;

/// The pixels of an image as the platform takes them, which stay the image's. Null, with a text in the
/// platform's error, if it is empty.
_KXSurface _KXSurfaceOf(const KXImage& image);
