#pragma once

#include <Kobaltrix/KXFont.h>

#include <memory>
#include <string>
#include <vector>

/// One font of the cache and what it is found by.
class _KXFontCacheItem {
public:
    /// Loads the font and sets its size; a size that cannot be set leaves the font at its own. Reports and
    /// throws std::bad_alloc when memory is exhausted. A null @a path is an empty one.
    _KXFontCacheItem(const char* path, KXAliasMode mode, int size, void* context);
    /// Not to be used: reports and throws std::bad_alloc.
    _KXFontCacheItem();

    KXFont* font() const { return _font.get(); }
    const char* path() const { return _path.c_str(); }
    KXAliasMode mode() const { return _mode; } ///< As asked for, before the font made sense of it.
    int size() const { return _size; }         ///< As asked for.
    void* context() const { return _context; } ///< The window that was the render context.

private:
    std::string _path;
    KXAliasMode _mode;
    int _size;
    std::unique_ptr<KXFont> _font;
    void* _context;
};

/// Fonts shared by everything that asks for the same file, mode and size in the same window.
class _KXFontCache {
public:
    _KXFontCache() = default;
    ~_KXFontCache() { clearFontVector(); }
    _KXFontCache(const _KXFontCache&) = delete;
    _KXFontCache& operator=(const _KXFontCache&) = delete;

    /// The font for the current window, loaded at the first request. Belongs to the cache. Null, with a
    /// report, when memory is exhausted. A null @a path is an empty one.
    KXFont* fontAtPath(const char* path, KXAliasMode mode, int size);
    /// Deletes every font.
    void clearFontVector();
    /// Deletes every font.
    void clear() { clearFontVector(); }
    int numberOfFonts() const { return static_cast<int>(_fonts.size()); }

private:
    std::vector<std::unique_ptr<_KXFontCacheItem>> _fonts;
};

/// The cache that all widgets share; null outside of KXInit() and KXDeInit().
inline constinit _KXFontCache* _KXGlobalFontCache = nullptr;

/// The font of the user interface at the size that was set; belongs to the global cache, and is null once
/// that has deleted its fonts.
inline constinit KXFont* _KXUIGlobalFont = nullptr;

/// Counts how often the global cache has deleted its fonts: a pointer to one of them that was taken at an
/// earlier count dangles.
inline constinit unsigned _KXGlobalFontGeneration = 0;

/// Creates the global cache, deleting an earlier one. Throws std::bad_alloc when memory is exhausted.
void _KXCreateGlobalFontCache();
/// Deletes the global cache and every font in it. Safe without one.
void _KXDestroyGlobalFontCache();
