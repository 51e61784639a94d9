#pragma once

#include <Kobaltrix/KXDisplay.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXRenderContext.h>

/// @file
/// Windows with an OpenGL surface.

class KXImage;
class KXTexture;
struct SDL_Window;
struct _KXPictureFit;
struct _KXPixelBox;

/// How a window projects what is drawn into it.
enum KXWindowRenderingMode : int {
    /// One unit is one point, y grows downward; no depth test, no culling.
    KXWindowRenderingMode2D = 0,
    /// Perspective with a vertical field of view of 45 degrees, near 1, far 1000; depth test and back-face
    /// culling. Every value other than 0 means this. From the first time on, the window has a depth buffer.
    KXWindowRenderingMode3D = 1
};

/// Whether KXWindow::swapBuffers() waits for the display.
enum KXVerticalSync : int {
    KXVerticalSyncAdaptive = -1, ///< It waits, unless the frame comes late.
    KXVerticalSyncOff = 0,       ///< It never waits.
    KXVerticalSyncOn = 1         ///< It waits; asked for when a window is made.
};

/// How what is drawn in a logical size fills a window of another.
enum KXScaling : int {
    /// As large as fits, as it is, in the middle; bars fill the rest.
    KXScalingLetterbox = 0,
    /// As large as the window, each axis by itself.
    KXScalingStretch = 1,
    /// The largest whole multiple in pixels that fits, in the middle; bars fill the rest. In a window that is
    /// too small for one as #KXScalingLetterbox.
    KXScalingWholeMultiples = 2,
    /// As large as fits, and what the window has beyond it to the right or below is drawn in as well:
    /// KXWindow::logicalSize() tells how much there is.
    KXScalingExpand = 3
};

/// A size that a game draws in, whatever the window's own. See KXWindow::setLogicalSize().
struct KXLogicalSize {
    KXSize size = {0, 0}; ///< In units. A side that is not above 0 is none: points are drawn in.
    KXScaling scaling = KXScalingLetterbox; ///< How it fills the window.
    KXColor bars = {0, 0, 0, 1};            ///< The colour of what it leaves of the window.
};

/// How a window covers its display.
enum KXFullscreen : int {
    KXFullscreenOff = 0,        ///< It is a window.
    KXFullscreenBorderless = 1, ///< It covers the display, whose mode stays: other windows come up at once.
    KXFullscreenExclusive = 2   ///< It has the display, in the mode of setDisplayMode().
};

/// A window with its own OpenGL context (compatibility profile).
///
/// Sizes and positions are in points; on a high-density display a point is more than one pixel. Textures
/// belong to the window that was current when they were made and draw nothing in another one.
///
/// Making a window does not make it the target of drawing: KXCurrentRenderContext() stays what it was, null
/// before the first setRenderContext(). Only OpenGL's context is there from the first window on, so textures
/// and fonts can be made for it at once. Call setRenderContext() before anything is drawn: until then drawing
/// goes into that first window, on a high-density display into a part of it.
///
/// A window has a depth buffer from its first 3D mode on, in both modes: one that is never used costs much
/// where the driver draws in software. A game that tests depth in OpenGL of its own sets that mode once. The
/// window is then drawn into a framebuffer object, so after binding framebuffers of its own such a game comes
/// back with setRenderContext(), or to what GL_FRAMEBUFFER_BINDING told before, rather than to 0.
class KX_API KXWindow final : public KXRenderContext {
public:
    /// Opens a window at the platform's default position.
    /// @param title UTF-8, copied; null for none. @param size in points, truncated to integers; what is less
    /// than 1 becomes 1. @param resizable non-zero to let the user resize it.
    /// Throws std::bad_alloc, with a text in KXError(), if the platform refuses, the size is not positive or
    /// the library is not initialised.
    KXWindow(const char* title, KXSize size, int resizable);
    /// Opens a window that the user cannot resize.
    KXWindow(const char* title, KXSize size);
    /// Closes the window. Textures made in it stay safe to use and destroy but draw nothing any more.
    virtual ~KXWindow();
    KXWindow(const KXWindow&) = delete;
    KXWindow& operator=(const KXWindow&) = delete;

    /// Makes the window the target of drawing: its context becomes current, the viewport its whole surface,
    /// the projection that of its rendering mode, the model-view matrix the identity. A window that
    /// KXDeInit() has closed changes nothing and leaves a text in KXError().
    void setRenderContext() override;
    /// Limits drawing to a rectangle in points, y downward, until unsetClip(). Position and size
    /// are truncated to whole pixels; where a side is not positive, nothing is drawn.
    ///
    /// A window and its textures share one limit, a box of pixels counted from the target's bottom left: it
    /// holds on in a texture that becomes the target, and a texture's holds on in the window.
    void setClipTo(KXRect rect) override;
    /// Removes the limit, also one that a texture has set.
    void unsetClip() override;

    /// Chooses the projection, which stays. It takes effect at once and makes the model-view matrix the
    /// identity; while a texture of the window is the target, it waits for the window's setRenderContext().
    void setRenderingMode(KXWindowRenderingMode mode);
    /// The size in points. Cached: costs nothing when called often.
    KXSize size();
    /// Asks for another size in points, truncated to integers. A side below 1 changes nothing.
    void setSize(KXSize size);
    /// Sets the smallest size in points the user can give the window, truncated to integers; a smaller window
    /// grows. A side below 1 changes nothing.
    void setMinimumSize(KXSize size);
    /// Sets the largest size in points the user can give the window, truncated to integers; a larger window
    /// shrinks. A side below 1 changes nothing.
    void setMaximumSize(KXSize size);

    /// Has everything drawn into the window in units of a size of the game's own, whatever size the user
    /// gives the window; KXLogicalSize() ends it. What it means for those that are drawn in points otherwise:
    /// drawing, setClipTo(), widgets, and the mouse and fingers are in units, of which (0, 0) is the top left
    /// of the picture; over its bars they are outside it. size(), copyTexture() and all pixels that are read
    /// back stay those of the window. It takes effect with setRenderContext(), and for the mouse with its
    /// next event. Textures that are drawn into keep their own pixels. The bars are drawn by
    /// setRenderContext().
    void setLogicalSize(const KXLogicalSize& logical);
    /// What is drawn into the window has room for so many units: the logical size, more of it with
    /// #KXScalingExpand; size() without one.
    KXSize logicalSize();
    /// The part of the window that the logical size fills, in points; all of it without one.
    KXRect pictureRect();
    /// Where a point of the window is in units, of the logical size; points of the window for mouse and
    /// fingers are such already.
    KXPoint unitsFromPoint(KXPoint point);
    /// Where in the window, in points, something is drawn.
    KXPoint pointFromUnits(KXPoint units);
    /// Pixels to a point: 1 on an ordinary display, 2 or a fraction on a dense one. The event
    /// #KXInputEventDensityChanged tells when it changes, as the window comes to another display.
    float density();
    /// Has glyphs made in the window's pixels, with a non-zero @a sharp, and placed on whole ones: text is as
    /// sharp as the display on one with two pixels to a point, and in a logical size that the window
    /// enlarges. With 0, as at the start, they are made in points or units and enlarged with these. What text
    /// measures and how far it reaches stays as it is. For text in a camera's world see KXCamera::sharpText;
    /// textures that are drawn into keep their own pixels. It takes effect at once.
    void setSharpText(int sharp);

    /// Moves the window's top-left corner on the desktop, truncated to integers.
    void setPosition(KXPoint position);
    /// The window's top-left corner on the desktop.
    KXPoint getPosition();
    /// Position on the desktop and size in points, asked of the platform.
    KXRect rect();
    /// Hides the window.
    void hide();
    /// Shows the window.
    void show();
    /// Sets the title (UTF-8, copied; null for none).
    void setTitle(const char* title);
    /// Sets the picture that the desktop shows for the window; it is copied. 32 by 32 to 256 by 256 pixels
    /// suit most desktops. @return -1, or 0 with a text in KXError() if the image is empty or the window
    /// closed.
    int setIcon(const KXImage& icon);
    /// Shows what was drawn; waits for the display's vertical sync where the platform grants it. What the
    /// surface holds afterwards is undefined: draw all of it anew.
    void swapBuffers();
    /// Asks for another vertical sync. @return -1, or 0 with a text in KXError() if the platform refuses.
    int setVerticalSync(KXVerticalSync sync);
    /// The vertical sync that is in force, as the platform tells.
    KXVerticalSync verticalSync();
    /// Number of the display the window is on, from 0; negative on failure.
    int getDisplayIndex();
    /// The platform's identifier of the window: the one in its events and in KXCurrentEventWindowID.
    unsigned id();
    /// Non-zero while the window has the keyboard or holds the pointer.
    int isFocused();
    /// Non-zero while the window is fullscreen.
    int isFullscreen();
    /// Asks for true fullscreen; a refusal is printed on standard output.
    void enterFullscreen();
    /// Back to a window.
    void exitFullscreen();
    /// Has the window cover its display, or be a window again.
    /// @return -1, or 0 with a text in KXError() if the platform refuses.
    int setFullscreen(KXFullscreen fullscreen);
    /// Chooses the mode of the display in #KXFullscreenExclusive; the nearest that there is.
    /// @return -1, or 0 with a text in KXError() if the platform refuses.
    int setDisplayMode(const KXDisplayMode& mode);

    /// Makes the window as large as the desktop has room for. A window manager may refuse, or do it later:
    /// isMaximized() tells. The user can do it with resizable windows only.
    void maximize();
    /// Puts the window away, to where the desktop keeps such windows.
    void minimize();
    /// Brings a maximised or minimised window back.
    void restore();
    /// Brings the window before all others and gives it the keyboard, where the desktop lets it.
    void raise();
    /// -1 while the window is maximised, else 0.
    int isMaximized();
    /// -1 while the window is minimised, else 0.
    int isMinimized();
    /// Keeps the window above all others with a non-zero @a onTop, no longer with 0.
    void setAlwaysOnTop(int onTop);
    /// Has the window a border and a title, as at the start, with a non-zero @a bordered; none with 0.
    void setBordered(int bordered);

    /// What was drawn since the last swap, as a texture of the window's size in points. It belongs to this
    /// window, and the caller deletes it. Null with a text in KXError() if it cannot be made.
    KXTexture* copyTexture();
    /// What was drawn since the last swap, all its pixels: red, green, blue and alpha of a byte each, rows
    /// from the top down without padding. What alpha holds is the platform's choice.
    /// @param width,height set to the size in pixels, to 0 on failure; null where it is of no interest.
    /// @return a block that the caller frees with free(); null with a text in KXError() if the window is
    /// closed.
    unsigned char* copyPixels(int* width, int* height);
    /// What was drawn since the last swap, all its pixels, opaque. Empty with a text in KXError() if the
    /// window is closed.
    KXImage copyImage();
    /// Writes what was drawn since the last swap, all its pixels, as a BMP file.
    /// @param path the file to write. @param powerOfTwo non-zero for an image whose sides are rounded up to
    /// powers of two. Its row y is the drawn row y and then, where the image is wider, the beginning of
    /// row y + 1; what lies below the last drawn row is transparent black.
    /// @return -1 on success, 0 on failure with a text in KXError().
    int saveBuffer(const char* path, int powerOfTwo);

    // Used by the library itself.
    KX_INTERNAL void _invalidateSizeCache();
    KX_INTERNAL bool _hasKnownSize() const; // else it was resized, and nobody has read of it yet
    KX_INTERNAL void _readPixels(char* buffer, unsigned format);
    KX_INTERNAL void _flipPixels(char* buffer, unsigned format);
    KX_INTERNAL void _closePlatformWindow();
    KX_INTERNAL void _drawableSize(int* width, int* height);
    KX_INTERNAL bool _isLogical() const;
    KX_INTERNAL _KXPictureFit _fit();
    KX_INTERNAL bool _hasBars(_KXPixelBox& picture);
    KX_INTERNAL int _densityNow();                 // thousandths, as the platform tells
    KX_INTERNAL void _setDensity(int thousandths); // as an event has told
    KX_INTERNAL bool _seesOtherDensity();
    KX_INTERNAL void _rememberDensity(int thousandths) { _seenDensity = thousandths; }

private:
    KX_INTERNAL void _commonInit(const char* title, KXSize size, int resizable);
    KX_INTERNAL void _register();
    KX_INTERNAL void _prepareContext(KXSize size);
    KX_INTERNAL void _applyProjection();
    KX_INTERNAL void _fitDepthSurface();
    KX_INTERNAL _KXPixelBox _pictureInPixels();
    KX_INTERNAL void _drawBars();

    SDL_Window* _window = nullptr;
    void* _context = nullptr;
    KXWindowRenderingMode _renderingMode = KXWindowRenderingMode2D;
    KXSize _sizeCache = {0, 0};
    unsigned _id = 0;
    unsigned _graphicsContext = 0;
    int _depthBits = 0; // of the platform's own surface
    KXLogicalSize _logical;
    int _seenDensity = 0; // the platform's
    int _density = 0;     // to go by, in thousandths; 0 until somebody asks
    bool _hasSharpText = false;
};
