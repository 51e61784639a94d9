#pragma once

#include <Kobaltrix/KXDrawOptions.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXRenderContext.h>

#include <stdint.h>

#include <memory>

/// @file
/// Textures: images that draw, and targets to draw into.

struct SDL_Surface;
struct _KXAffine;

/// What a texture shows beyond its edges, where the source of its KXDrawOptions reaches past them.
enum KXWrap : int {
    KXWrapNone = 0,   ///< Nothing, the source is cut. A linear filter mixes in the opposite edge.
    KXWrapClamp = 1,  ///< The pixels at the edge, on and on. A linear filter keeps to them.
    KXWrapRepeat = 2, ///< The texture again.
    KXWrapMirror = 3  ///< The texture again, every other one mirrored.
};

/// Sets the filter of textures uploaded from now on: nearest for 1 (the default), linear for any other value.
KX_API void KXSetTextureMode(int mode);

/// An OpenGL texture with a tint.
///
/// It belongs to the window that was current when it was made and draws only there. Drawing needs 2D
/// texturing and blending on, as a window sets them up and the library leaves them; the game's model-view
/// matrix applies. Every draw binds the texture and leaves the current colour changed.
class KX_API KXTexture final : public KXRenderContext {
public:
    /// An empty texture: size (0, 0), draws nothing.
    KXTexture();
    /// Loads an image file (any type SDL_image reads) of 24 or 32 bits per pixel.
    /// Throws std::bad_alloc if it cannot; KXError() says why, but for null and for a file that is missing or
    /// unreadable it is left as it was.
    explicit KXTexture(const char* path);
    /// A blank texture of width by height pixels with undefined contents; clear() empties it. For sizes that
    /// are not positive or too large for the graphics driver, and while there is no window, it is an empty
    /// texture with a text in KXError(): ask its size().
    KXTexture(int width, int height);
    /// A texture of an image. Where the image is empty, too large for the graphics driver, or there is no
    /// window, it is an empty texture with a text in KXError(). `KXTexture(KXImage(1, 1, KXRedColor))` is one
    /// in a single colour.
    explicit KXTexture(const KXImage& image);
    /// Deletes the texture; if drawing goes into it, drawing into it stops first.
    ~KXTexture();
    KXTexture(const KXTexture&) = delete;
    KXTexture& operator=(const KXTexture&) = delete;

    /// Makes it the texture that OpenGL samples; none where it is empty or belongs to another window.
    void bind();
    /// Width and height in pixels.
    KXSize size();
    /// Sets the colour that every draw is multiplied by (white by default). Its alpha is not used.
    void setTint(KXColor tint);
    /// The colour that every draw is multiplied by.
    KXColor tint();
    /// Says that the colours of its pixels are multiplied by their alpha (non-zero), or are not (0, at
    /// first).
    ///
    /// A target that half-transparent things are drawn into, over nothing, wants this: drawn into the window
    /// afterwards it gives what drawing straight into the window would have given, within a step of 255 where
    /// up to three such things lie on each other. Without, its colours are covered a second time there, dark
    /// and thin. What is drawn into it stores colours so and the alpha of all layers together (#KXBlendAlpha,
    /// also where the game has blending of its own); what it is drawn as is heeded in every #KXBlendMode.
    /// Empty it with clear() first. getPixel() and writeToPNG() give what is stored. It changes no pixel.
    void setPremultiplied(int premultiplied);
    /// Whether its colours count as multiplied by their alpha: -1 or 0.
    int isPremultiplied() const;
    /// Makes every pixel transparent black, or black where the image it was loaded from has no alpha.
    void clear();

    /// Draws the texture, or a part of it, as the options say: `draw({.position = {10, 20}})`. Both the
    /// texture's tint and that of the options count.
    void draw(const KXDrawOptions& options);
    /// Where draw() with these options has the texture, or the part of it.
    KXPlacedBox placed(const KXDrawOptions& options) const;
    /// Gives it an image's size and pixels; they are copied. A texture that belongs to another window belongs
    /// to the current one then, unless the sizes are the same. Tint, filter and wrap stay.
    /// @return -1 on success; 0 on failure, with a text in KXError(): the texture is what it was.
    int setImage(const KXImage& image);
    /// Gives a rectangle of it the pixels of an image. What reaches past the edges of the texture is left
    /// out, and so is the opacity where the file it was loaded from had none.
    /// @param image the rectangle's size. @param x,y where its top left corner goes, in the texture's pixels.
    /// @return -1 on success; 0, with a text in KXError(), if the texture is empty or its window is closed.
    int setPart(const KXImage& image, int x, int y);
    /// A copy of its pixels; empty, with a text in KXError(), where copyPixels() gives null.
    KXImage copyImage();
    /// Sets how it is scaled, from now on and for what it is given later. Before that is called,
    /// KXSetTextureMode() decides whenever it is given other pixels.
    void setFilter(KXFilter filter);
    /// How it is scaled.
    KXFilter filter();
    /// Sets what it shows beyond its edges, #KXWrapNone at the start.
    void setWrap(KXWrap wrap);
    /// What it shows beyond its edges.
    KXWrap wrap();

    /// Draws the whole texture in its natural size, fully opaque.
    /// @param x,y where its top-left corner goes. @param transformed as in the full form.
    void draw(int x, int y, int transformed);
    /// Draws the whole texture, transformed. Write @a opacity and @a scale as 1.0f: seven integers are the
    /// form below, which draws a part of the texture. draw(const KXDrawOptions&) has names instead.
    void draw(int x, int y, float opacity, float scale, int rotation, int flips, int transformed);
    /// Draws the part from (sx1, sy1) to (sx2, sy2) in its natural size, fully opaque. A part that ends
    /// before it begins draws nothing and leaves a text in KXError(): such integers are mostly meant for the
    /// form above.
    void draw(int sx1, int sy1, int sx2, int sy2, int x, int y, int transformed)
        KX_WARN_IF(sx2 < sx1 || sy2 < sy1,
                   "seven integers draw the part from (sx1, sy1) to (sx2, sy2), which "
                   "is empty here; an opacity and a scale are written as 1.0f");
    /// Draws a part in its natural size, transformed.
    void draw(int sx1, int sy1, int sx2, int sy2, int x, int y, float opacity, float scale, int rotation,
              int flips, int transformed);
    /// Draws the part from (sx1, sy1) to (sx2, sy2), stretched and transformed. The other forms end here.
    /// @param sx1,sy1,sx2,sy2 pixels of the texture; what reaches past its edges is cut off.
    /// @param width,height size drawn; negative for the size of the part.
    /// @param x,y where its top-left corner goes.
    /// @param opacity 0.0 to 1.0. @param scale 1.0 is natural size, anchored at (x, y).
    /// @param rotation degrees, about the middle of the part: clockwise on screen, the other way if it is
    /// flipped.
    /// @param flips a KXFlip, about the middle of the part, too.
    /// @param transformed 0 draws without scale, rotation and flips; -1 with them.
    void draw(int sx1, int sy1, int sx2, int sy2, int width, int height, int x, int y, float opacity,
              float scale, int rotation, int flips, int transformed);

    /// Multiplies OpenGL's current matrix by the placement that draw() gives its quad, for a game's own
    /// OpenGL.
    /// @param x,y where its top-left corner goes.
    /// @param width,height size of the part drawn, whose middle is the centre of rotation and flips.
    /// @param scale,rotation,flips as in the full form of draw().
    void drawingPosition(int x, int y, int width, int height, float scale, int rotation, int flips);

    /// Draws the texture as a frame of @a size pixels: its four corners of @a corner by @a corner pixels as
    /// they are, the edges and the middle stretched between them.
    void drawNineSlice(KXPoint position, KXSize size, int corner, float opacity);
    /// The same, fully opaque.
    void drawNineSlice(KXPoint position, KXSize size, int corner);

    /// The colour of one pixel; all channels -1.0 outside the texture.
    /// @param point in the texture's pixels, from its top left.
    /// @param keepCache non-zero keeps the pixels that were read back for further calls, until the texture's
    ///   contents are replaced, cleared or drawn into; 0 keeps none that were not kept already. While the
    ///   texture is the target of drawing, none are kept.
    KXColor getPixel(KXPoint point, int keepCache);
    /// All its pixels: red, green, blue and alpha of a byte each, rows from the top down without padding.
    /// @return a block of size() that the caller frees with free(); null with a text in KXError() if the
    /// texture is empty or its window is closed.
    unsigned char* copyPixels();
    /// Writes the texture as a PNG file. @return -1 on success, 0 on failure with a text in KXError().
    int writeToPNG(const char* path);

    /// Makes the texture the target of drawing, in its own pixels, y downward. Afterwards call
    /// unsetRenderContext() and the window's setRenderContext(). An empty texture, or one whose window is
    /// closed, changes nothing and leaves a text in KXError(). Where the driver cannot draw into it, there is
    /// a text, too, and what is drawn is lost.
    void setRenderContext() override;
    /// Stops drawing into the texture; there is then no target until a window is made the target again. It
    /// changes nothing if the texture is not the target.
    void unsetRenderContext() override;
    /// Limits drawing to a rectangle in the texture's pixels, y downward, until unsetClip(). Position
    /// and size are truncated to integers; where a side is not positive, nothing is drawn. The limit is the
    /// window's own, and holds on when the window becomes the target: see KXWindow::setClipTo().
    void setClipTo(KXRect rect) override;
    /// Removes the limit, also one that the window has set.
    void unsetClip() override;

    // Used by the library itself.
    KX_INTERNAL void _commonInit();
    KX_INTERNAL void _clearTextureID();
    KX_INTERNAL void _clearFBOID();
    KX_INTERNAL int _loadImage(const char* path);
    KX_INTERNAL void _reload(const char* path);
    KX_INTERNAL int _loadFromData(int width, int height, int internalFormat, unsigned format,
                                  const char* data);
    KX_INTERNAL void _getPixel(int x, int y, float& r, float& g, float& b, float& a, int keepCache);
    KX_INTERNAL int _savePNG(const char* path);
    KX_INTERNAL bool _isUsableHere() const;
    KX_INTERNAL unsigned _name() const { return _textureID; } // OpenGL's
    KX_INTERNAL SDL_Surface* _newSurface(); // the caller's; null with a text in the platform's error

private:
    KX_INTERNAL void _forgetPixels();
    KX_INTERNAL void _drawQuad(const KXRect& part, const KXDrawOptions& options, const _KXAffine& placement,
                               KXSize size);
    KX_INTERNAL void _readBack(unsigned type, void* pixels);
    KX_INTERNAL void _applySampling();

    unsigned _textureID;
    unsigned _framebufferID;
    KXSize _size;
    KXColor _tint;
    int _internalFormat;
    unsigned _format;
    std::unique_ptr<float[]> _pixelCache; // what getPixel() keeps
    unsigned _graphicsContext;            // of the window it belongs to
    bool _premultiplied = false;
    KXFilter _filter = KXFilterNearest;
    bool _hasOwnFilter = false;
    KXWrap _wrap = KXWrapNone;
};
