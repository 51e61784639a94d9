#include "text/FontCache.h"

#include "core/ground/ErrorSlot.h"
#include "render/KXRenderContext.h"

#include <cstring>
#include <new>

_KXFontCacheItem::_KXFontCacheItem(const char* path, KXAliasMode mode, int size, void* context)
    : _path(path ? path : ""), _mode(mode), _size(size), _context(context) {
    try {
        _font = std::make_unique<KXFont>(_path.c_str(), mode);
    } catch (const std::bad_alloc&) {
        _KXReportError("Unable to load font at path:");
        throw;
    }
    _font->setSize(size);
}

_KXFontCacheItem::_KXFontCacheItem() : _mode(KXAliasModeTexture), _size(0), _context(nullptr) {
    _KXReportError("Cannot instantiate default _KXFontCacheItem");
    throw std::bad_alloc();
}

KXFont* _KXFontCache::fontAtPath(const char* path, KXAliasMode mode, int size) {
    void* const context = _KXCurrentWindowRenderContext;
    if (!path)
        path = "";
    for (const auto& item : _fonts)
        if (item->size() == size && item->mode() == mode && item->context() == context &&
            std::strcmp(item->path(), path) == 0)
            return item->font();
    try {
        _fonts.push_back(std::make_unique<_KXFontCacheItem>(path, mode, size, context));
        return _fonts.back()->font();
    } catch (const std::bad_alloc&) {
        _KXReportError("Unable to load font and add it to the global cache.");
        return nullptr;
    }
}

void _KXFontCache::clearFontVector() {
    if (this == _KXGlobalFontCache) {
        ++_KXGlobalFontGeneration;
        _KXUIGlobalFont = nullptr;
    }
    _fonts.clear();
}

void _KXCreateGlobalFontCache() {
    auto cache = std::make_unique<_KXFontCache>();
    _KXDestroyGlobalFontCache();
    _KXGlobalFontCache = cache.release();
}

void _KXDestroyGlobalFontCache() {
    delete _KXGlobalFontCache;
    _KXGlobalFontCache = nullptr;
}

void KXClearGUIFontCache() {
    if (_KXGlobalFontCache)
        _KXGlobalFontCache->clear();
}

int KXGUIFontCacheSize() { return _KXGlobalFontCache ? _KXGlobalFontCache->numberOfFonts() : 0; }

KXFont* KXCachedFont(const char* path, KXAliasMode mode, int size) {
    return _KXGlobalFontCache ? _KXGlobalFontCache->fontAtPath(path, mode, size) : nullptr;
}
