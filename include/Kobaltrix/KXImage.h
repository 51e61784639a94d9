#pragma once

#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

#include <cstddef>
#include <vector>

/// @file
/// Images in memory: made, loaded, changed pixel by pixel, drawn into, saved. They need no window and no
/// start of the library. A KXTexture made of one draws it.
///
///     KXImage ship(16, 16); // transparent
///     ship.drawCircleFill({8, 8}, 7, KXRedColor);
///     KXTexture texture(ship);
///
/// Everything here is usable from any thread, one image by one thread at a time; a text in KXError() is for
/// the thread that failed. Truth values are ints: -1 for yes, 0 for no. What needs more memory than there is
/// throws std::bad_alloc and changes nothing.

/// Sets how many pixels an image may have, 134217728 (half a gigabyte) at the start. A file of a few bytes
/// may claim any size: one that claims more is refused before there is memory for it, with a text in
/// KXError(). Counts for images and textures loaded, and for images made, from now on.
KX_API void KXSetMaximumImagePixels(uint32_t pixels);

/// A pixel of an image: a byte each, straight alpha.
struct KXPixel {
    uint8_t r; ///< Red.
    uint8_t g; ///< Green.
    uint8_t b; ///< Blue.
    uint8_t a; ///< Opacity: 0 transparent, 255 opaque.
};

/// The pixel nearest to a colour. Channels below 0 count as 0 and those above 1 as 1, and so does what is not
/// a number as 0.
KX_API KXPixel KXPixelOf(KXColor color);
/// The colour of a pixel.
KX_API KXColor KXColorOf(KXPixel pixel);

/// Which pixels show where an image or a texture is scaled.
enum KXFilter : int {
    KXFilterNearest = 0, ///< The one that is nearest: hard edges.
    KXFilterLinear = 1   ///< A mean of those around: smooth.
};

/// An image: rows of pixels from the top down. A plain value: a copy has pixels of its own.
///
/// Places are whole pixels from the top left; points and rectangles lose their fractions toward zero. What
/// lies outside is never drawn, and whatever is drawn into an image is drawn over what is there, by its
/// opacity; fill(), setPixel() and paste() put pixels in the place of others.
class KX_API KXImage {
public:
    /// An empty image, 0 by 0.
    KXImage();
    /// An image in one colour, transparent black by default. Where a side is not positive, or there would be
    /// more pixels than KXSetMaximumImagePixels() allows, it is empty, with a text in KXError().
    KXImage(int width, int height, KXColor color = KXColor{0, 0, 0, 0});
    /// Loads an image file as load() does. Throws std::bad_alloc if it cannot; KXError() says why.
    explicit KXImage(const char* path);
    /// An image of pixels in memory, which are copied.
    /// @param width,height as for KXImage(int, int, KXColor). @param rgba red, green, blue and alpha of a
    /// byte each, rows from the top down without padding, as KXTexture::copyPixels() gives them. For null it
    /// is empty, with a text.
    static KXImage fromPixels(int width, int height, const void* rgba);
    /// A copy.
    KXImage(const KXImage& other);
    /// Takes over an image's pixels; the other is empty then.
    KXImage(KXImage&& other) noexcept;
    ~KXImage();
    /// Becomes a copy of another image.
    KXImage& operator=(const KXImage& other);
    /// Takes over an image's pixels; the other is empty then.
    KXImage& operator=(KXImage&& other) noexcept;

    /// Loads an image file of any type that SDL_image reads, with palettes and without; but not the layers of
    /// a drawing program (XCF), whose decoder does not bear bad files.
    /// @return -1 on success; 0 on failure, with a text in KXError(): the image is what it was.
    int load(const char* path);
    /// Loads the bytes of an image file. Types that only their names tell (TGA) are not known so.
    /// @param bytes,size the whole file, copied. @return as load().
    int loadFromMemory(const void* bytes, std::size_t size);
    /// Writes it as a PNG file, whole or not at all: on failure a file is what it was.
    /// @return -1 on success; 0 on failure, with a text in KXError().
    int writeToPNG(const char* path) const;
    /// The bytes of a PNG file.
    /// @param size receives how many. @return a block that the caller frees with free(); null on failure,
    /// with a text in KXError().
    unsigned char* copyPNG(std::size_t* size) const;

    /// Its width in pixels.
    int width() const { return _width; }
    /// Its height in pixels.
    int height() const { return _height; }

    /// The pixels of a row, width() of them, to be read and written directly; the next row's follow. Null for
    /// rows that it has not. Good until the image is given other pixels.
    KXPixel* row(int y);
    /// The same, to be read.
    const KXPixel* row(int y) const;
    /// The colour of a pixel; all channels -1.0 outside.
    KXColor getPixel(int x, int y) const;
    /// Sets a pixel. @return -1; 0 outside.
    int setPixel(int x, int y, KXColor color);

    /// Sets all pixels to one colour.
    void fill(KXColor color);
    /// Sets the pixels of a rectangle to one colour.
    void fill(KXRect rect, KXColor color);
    /// Puts an image in the place of what is there, its transparent pixels, too.
    /// @param image it may be this one. @param x,y where its top left corner goes.
    void paste(const KXImage& image, int x, int y);

    /// Draws an image over what is there. @param image it may be this one. @param x,y where its top left
    /// corner goes.
    void draw(const KXImage& image, int x, int y);
    /// Draws the outline of a rectangle, a pixel wide and inside of it.
    void drawRect(KXRect rect, KXColor color);
    /// Draws a rectangle, filled.
    void drawRectFill(KXRect rect, KXColor color);
    /// Draws a line of one pixel's width, both ends included.
    void drawLine(KXPoint from, KXPoint to, KXColor color);
    /// Draws a circle, filled: all pixels whose middles lie inside. Here fractions count.
    void drawCircleFill(KXPoint centre, float radius, KXColor color);

    /// A copy of a part; what lies outside of the image is transparent black.
    KXImage part(KXRect rect) const;
    /// A flipped copy. @param flips a KXFlip; the diagonal one exchanges rows and columns.
    KXImage flipped(int flips) const;
    /// A copy of another size, as in KXImage(int, int, KXColor); empty if the image is.
    KXImage scaled(int width, int height, KXFilter filter) const;

private:
    std::vector<KXPixel> _pixels;
    int _width;
    int _height;
};
