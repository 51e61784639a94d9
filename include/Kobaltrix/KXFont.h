#pragma once

#include <Kobaltrix/KXTypes.h>

#include <cstddef>
#include <memory>
#include <vector>

/// @file
/// Text from TrueType and OpenType files, and the cache that shares fonts between widgets.
///
/// Text is UTF-8 and always one line: line breaks and tabs are drawn as whatever the font has for them. Bytes
/// that are not UTF-8 count as question marks. Everything needs the thread that owns the OpenGL context, and
/// measuring or printing needs the context of a #KXWindow to be current; without one, glyphs that were never
/// used before measure as nothing and nothing is drawn.
///
/// Printed text may change its colour: `{C1,0,0,1}red{EC} rest` prints "red" in red. The four numbers are
/// red, green, blue and alpha from 0.0 to 1.0 with a decimal point; spans do not nest, and an incomplete one
/// is printed as it stands. The colour's end is the first closing brace of the text since the span before,
/// so a plain closing brace ahead of a span spoils that span.

class FTFont;
class _KXTypeface;

// The destructor is not virtual: a class derived from this one is deleted through its own type.
#if defined(__GNUC__) || defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// One font file at one size at a time. Fonts are usually shared through the library's font cache.
///
/// What it draws with textures is kept for each window, see KXSetGlyphMemory(). Polygons live in the OpenGL
/// context they were first used in: used in another one they are made again there, so a game with several
/// windows keeps one such font for each.
class KX_API KXFont {
public:
    /// Loads a font at a size of 10 points. A file that is missing or no font gives an object that measures
    /// 0, prints nothing and fails setSize() with "Unable to set font face size" in KXError().
    /// Throws std::bad_alloc when memory is exhausted.
    /// @param path the font file; only read. @param mode a #KXAliasMode, others count as
    /// #KXAliasModeTexture.
    KXFont(const char* path, int mode);
    /// The same for the content of a font file that lies in memory, which is copied. What is no font gives an
    /// object as a missing file does.
    KXFont(const void* bytes, std::size_t size, int mode);
    /// There is no font without a file: throws std::bad_alloc.
    KXFont();
    ~KXFont();
    KXFont(const KXFont&) = delete;
    KXFont& operator=(const KXFont&) = delete;

    /// Sets the size. @param size points; one point is one pixel of the drawing space.
    /// @return -1 on success and for the size in use, 0 on failure with the old size kept and
    /// "Unable to set font face size" in KXError(). Negative sizes and those above 65535 fail.
    virtual int setSize(int size);
    /// The size in points; 0 for a font that could not be loaded.
    int getSize() const;

    /// Sets by how many pixels text is moved right and down at a size of @a size points.
    void setRenderingOffsetForSize(int size, KXPoint offset);
    /// The offset set for the size in use, whatever @a size is; (0, 0) if none was set.
    KXPoint renderingOffsetForSize(int size) const;

    /// stringBounds() with a @a raw of 0.
    KXSize stringBounds(const char* text) const;
    /// Pixels of the box around a text's ink. A blank counts as the point of the baseline where it begins.
    /// @param text UTF-8, no format: a percent sign is one wherever it stands. @param raw 0 leaves the codes
    /// of colour spans out and measures the first 1023 bytes of what is left, which may be more than print()
    /// shows of a long text: its limit counts the codes. Otherwise everything is measured as it is written,
    /// at any length.
    KXSize stringBounds(const char* text, int raw) const;
    /// Pixels from one line to the next: the height of a box that would hold every glyph of the font.
    float lineHeight() const;
    /// Pixels from the baseline to the top of a line, as the font has it; single glyphs may reach higher.
    float ascender() const;
    /// Pixels from the baseline to the bottom of a line, normally negative; single glyphs may reach lower.
    float descender() const;
    /// Pixels by which a text of any length moves the pen, colour spans measured as they are written.
    float advance(const char* text) const;
    /// The ascender and the descender's whole pixels together.
    float fullHeight() const;

    /// Formats like printf and prints the text, cut to 1023 bytes between two characters, the codes of colour
    /// spans counted.
    ///
    /// Leaves the current OpenGL colour at @a c, the current texture coordinates at those of the last corner
    /// drawn, and with #KXAliasModePolygon 2D texturing enabled; all other state is as before.
    /// @param p the top-left corner, which the rendering offset of the size in use is added to; the baseline
    /// lies floor(ascender) + floor(descender) below it.
    /// @param c the colour outside of colour spans. @param format null prints nothing.
    void print(KXPoint p, KXColor c, const char* format, ...) KX_PRINTF(4, 5);

    /// Adds a font that layouts (KXTextLayout.h) ask for what this one does not have, after those that were
    /// added before. Its file counts, at the size of this one, and not its own fallbacks; it may be deleted
    /// then. What this class prints and measures stays as it is. Of a font with pictures in colour, such as
    /// emoji, these are scaled to the size and keep their colours.
    void addFallback(const KXFont& font);

    // Used by the library itself.
    KX_INTERNAL void _printPlain(KXPoint p, KXColor c, const char* text);
    KX_INTERNAL KXAliasMode _aliasModeInUse() const;
    KX_INTERNAL unsigned _currentRevision() const;
    KX_INTERNAL const std::vector<std::shared_ptr<_KXTypeface>>& _typefacesInUse() const;

private:
    struct Offsets;
    struct Sources;
    KX_INTERNAL KXFont(std::unique_ptr<Sources> sources, int mode);
    KX_INTERNAL bool _canPrint() const;
    KX_INTERNAL KXPoint _originOf(KXPoint p) const;

    int _size;
    KXAliasMode _aliasMode;
    unsigned _revision;
    std::unique_ptr<Sources> _sources; // which the face reads from
    std::unique_ptr<FTFont> _font;
    std::unique_ptr<Offsets> _offsets;
};

#if defined(__GNUC__) || defined(__clang__)
#pragma GCC diagnostic pop
#endif

/// Deletes every font in the cache. Widgets that used one have no font until they are given one again with
/// setFont(); the user-interface font must be set again and reaches widgets made after that.
KX_API void KXClearGUIFontCache();
/// Number of fonts in the cache, those that could not be opened included; 0 before KXInit().
KX_API int KXGUIFontCacheSize();
/// The font for a file, a mode and a size in the window that is the render context: loaded when it is first
/// asked for, and the same one from then on. It belongs to the cache, lives until KXClearGUIFontCache(), and
/// is shared with widgets: leave its size as it is. Null outside of KXInit() and KXDeInit() or, with
/// "Unable to load font and add it to the global cache.", when memory is exhausted.
KX_API KXFont* KXCachedFont(const char* path, KXAliasMode mode, int size);

/// The file of an installed font by its name, such as "DejaVu Sans", "DejaVu Sans:bold", or one of "sans",
/// "serif" and "monospace" for what the system has as such. Only where fontconfig knows the system's fonts;
/// on Windows those in the system's folder and the user's. The first search may take long; keep the path.
/// @return a temporary string. Null, with a message in KXError(), if there is no such font.
KX_API const char* KXFindFont(const char* name);
