#pragma once

#include <KobaltrixTest/KXTestPicture.h>

// Short names for the kit's pictures.
using Image = KXTestPicture;
using Pixel = KXTestPixel;

inline bool isNear(Pixel p, Pixel q, int tolerance) { return p.isNear(q, tolerance); }
inline int differingPixels(const Image& a, const Image& b, int tolerance = 0) {
    return a.differing(b, tolerance);
}
