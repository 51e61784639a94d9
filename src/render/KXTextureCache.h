#pragma once

#include <Kobaltrix/KXTextureCache.h>

#include <cstdint>
#include <memory>

/// A cached texture and the window that was current when it was loaded.
class _KXTextureCacheItem {
public:
    /// Takes the texture over.
    _KXTextureCacheItem(KXTexture* texture, void* renderContext);
    ~_KXTextureCacheItem();
    _KXTextureCacheItem(const _KXTextureCacheItem&) = delete;
    _KXTextureCacheItem& operator=(const _KXTextureCacheItem&) = delete;

    KXTexture* texture() const { return _texture.get(); }
    void* renderContext() const { return _renderContext; }

private:
    std::unique_ptr<KXTexture> _texture;
    void* _renderContext;
};

/// Changes whenever a path that was answered once may be answered by another texture in the same window, so
/// that who draws often may keep an answer until then.
inline constinit std::uint64_t _KXTextureCacheGeneration = 0;

/// Loads those again whose files have changed since; see KXReloadChangedFiles().
void _KXReloadChangedTextures();

/// Makes an item the entry of a path and takes it over. The item it replaces lives on until the cache is
/// purged.
void _KXTextureCacheAdd(char const* path, _KXTextureCacheItem* item);
/// The entry of a path, null for none.
_KXTextureCacheItem* _KXTextureCacheGet(const char* path);
