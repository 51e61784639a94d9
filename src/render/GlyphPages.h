#pragma once

#include <vector>

/// The textures of some glyphs: the same pixels in both, white and as opaque as the glyph covers them.
struct _KXGlyphPage {
    unsigned smooth; ///< Filtered, for glyphs of any size anywhere.
    /// Not filtered, as software draws fastest: the same on whole pixels at natural size. With other drivers
    /// it is the smooth one.
    unsigned sharp;

    bool hasSharp() const { return sharp != smooth; }
};

/// Textures that hold the glyphs of a face. The context they were made in must be current for whatever is
/// done with them; OpenGL's state stays as it was.
class _KXGlyphPages {
public:
    /// The longest side that a texture may have.
    static int largestSide();

    bool empty() const { return _pages.empty(); }
    /// The page that was added last.
    _KXGlyphPage last() const { return _pages.back(); }
    /// Adds an empty square page. False if the driver cannot hold it.
    bool add(int side);
    /// Copies a bitmap of opacities onto the last page. @param pitch bytes from one row of the bitmap to the
    /// next.
    void upload(int x, int y, int width, int height, const unsigned char* bitmap, int pitch);
    /// Deletes the textures, after what was to be drawn with them.
    void clear();

private:
    std::vector<_KXGlyphPage> _pages;
};
