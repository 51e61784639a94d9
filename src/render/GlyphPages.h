#pragma once

#include <vector>

/// Textures that hold the glyphs of a face as opacities, a byte a pixel. The context they were made in must
/// be current for whatever is done with them; OpenGL's state stays as it was.
class _KXGlyphPages {
public:
    /// The longest side that a texture may have.
    static int largestSide();

    bool empty() const { return _textures.empty(); }
    /// The texture of the page that was added last.
    unsigned last() const { return _textures.back(); }
    /// Adds an empty square page.
    void add(int side);
    /// Copies a bitmap onto the last page. @param pitch bytes from one row of the bitmap to the next.
    void upload(int x, int y, int width, int height, const unsigned char* bitmap, int pitch);
    /// Deletes the textures, after what was to be drawn with them.
    void clear();

private:
    std::vector<unsigned> _textures;
};
