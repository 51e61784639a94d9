#pragma once

#include "render/GlyphPages.h"
#include "render/QuadStream.h"

#include <Kobaltrix/KXDrawBatch.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

/// Which glyph it is, and how it was made.
struct _KXGlyphKey {
    std::uint32_t font;  ///< The number of what it comes from.
    std::uint32_t index; ///< In the font.
    std::uint32_t size;  ///< 64ths of a pixel to the em.
    std::uint32_t grown; ///< By how much it is grown all around, in 64ths of a pixel; 0 as it is.

    bool operator==(const _KXGlyphKey&) const = default;
};

/// Which page a glyph lies on. A page that has left never has its number again.
struct _KXGlyphPlace {
    std::uint32_t slot = 0, number = 0;

    bool operator==(const _KXGlyphPlace&) const = default;
};

/// What a glyph shows: a part of a page, placed against the pen. Without a texture it shows nothing, as a
/// blank.
struct _KXGlyphInk {
    _KXGlyphPage page = {};
    _KXGlyphPlace place = {};
    _KXTextureRect source = {};
    KXPoint leftTop = {0, 0}; ///< From the pen, y upward.
    KXSize size = {0, 0};
};

/// How many bytes of textures glyphs may take in each OpenGL context.
inline constinit std::size_t _KXGlyphMemory = std::size_t{16} << 20;

/// The glyphs of an OpenGL context, of all fonts and sizes, on pages that they share. The page whose last use
/// is longest ago leaves where the memory for another one is used up, but none that the frame being drawn has
/// used. The context must be current for whatever may call OpenGL; its state stays as it was.
class _KXGlyphStore {
public:
    /// A glyph that was added and has not left, and uses its page; null where there is none. Valid until the
    /// next is added.
    const _KXGlyphInk* find(const _KXGlyphKey& key);
    /// Adds a glyph that is not there. Null if the driver has no room for it.
    /// @param bitmap with a pixel at least, and no side longer than a texture with its border may have.
    const _KXGlyphInk* add(const _KXGlyphKey& key, const _KXGlyphBitmap& bitmap, KXPoint leftTop);
    /// Uses a page in this frame. False if it has left.
    bool use(_KXGlyphPlace place) {
        if (place.slot >= _pages.size() || _pages[place.slot].number != place.number)
            return false;
        _pages[place.slot].lastUse = _frame;
        return true;
    }
    /// Has what the frame did not use leave if there is too much.
    void endFrame();
    /// Forgets the glyphs of a font that is gone. Calls no OpenGL but for a batch that is let out.
    void forget(std::uint32_t font);

    KXGlyphStatistics statistics() const;

private:
    struct Shelf {
        int top, height;
        int left; // of what is free
    };
    struct Page {
        std::uint32_t number = 0; // 0 for a slot without a page
        _KXGlyphPage textures = {};
        int side = 0;
        bool isShared = false; // else it is there for one glyph
        std::uint64_t lastUse = 0;
        int top = 0; // of what has no shelf yet
        std::vector<Shelf> shelves = {};
        std::vector<_KXGlyphKey> glyphs = {};
    };
    struct Spot {
        Page* page;
        int x, y;
    };
    struct Hash {
        std::size_t operator()(const _KXGlyphKey& key) const;
    };

    static Shelf* shelfFor(Page& page, int width, int height);
    Spot spotFor(int width, int height, bool isColored);
    Page* addPage(int width, int height, bool isColored);
    void fitMemory();
    void leave(Page& page);
    std::size_t bytes() const;

    std::vector<Page> _pages; // by slot
    std::unordered_map<_KXGlyphKey, _KXGlyphInk, Hash> _inks;
    std::uint64_t _frame = 1;
    int _made = 0, _dropped = 0;
};

/// The glyphs of the current OpenGL context, which must be there.
_KXGlyphStore& _KXGlyphsHere();
/// Ends a frame of the current OpenGL context.
void _KXEndGlyphFrame();
/// Forgets the glyphs of a context that ends.
void _KXForgetGlyphsIn(unsigned context);
/// Has every context forget the glyphs of a font that is gone.
void _KXForgetGlyphsOf(std::uint32_t font);
