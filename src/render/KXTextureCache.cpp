#include "render/KXTextureCache.h"

#include "core/ground/HeapGlobal.h"
#include "render/KXRenderContext.h"
#include "render/KXTexture.h"
#include "util/FollowedFile.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {
// Every item ever entered for a path; the last one is the entry. Those it has replaced stay for whoever holds
// their textures, and serve their own window again.
using Items = std::vector<std::unique_ptr<_KXTextureCacheItem>>;
struct Entry {
    Items items;
    _KXFollowedFile file;
};
using Cache = std::map<std::string, Entry, std::less<>>;
} // namespace

static constinit _KXHeapGlobal<Cache> _KXTextureCache;

_KXTextureCacheItem::_KXTextureCacheItem(KXTexture* texture, void* renderContext)
    : _texture(texture), _renderContext(renderContext) {}

_KXTextureCacheItem::~_KXTextureCacheItem() = default;

static Items* itemsOf(const char* path) {
    Cache* const cache = _KXTextureCache.find();
    if (!path || !cache)
        return nullptr;
    const auto found = cache->find(std::string_view(path));
    return found == cache->end() || found->second.items.empty() ? nullptr : &found->second.items;
}

void _KXTextureCacheAdd(char const* path, _KXTextureCacheItem* item) {
    std::unique_ptr<_KXTextureCacheItem> owned(item);
    Items& items = _KXTextureCache.get()[path].items;
    items.push_back(std::move(owned));
    if (items.size() > 1)
        ++_KXTextureCacheGeneration;
}

_KXTextureCacheItem* _KXTextureCacheGet(const char* path) {
    const Items* items = itemsOf(path);
    return items ? items->back().get() : nullptr;
}

static bool servesCurrentWindow(const std::unique_ptr<_KXTextureCacheItem>& item) {
    // The texture knows whether the context it was made in is current; an address alone may have been used
    // again, and there is none in items from before the window first became the target.
    return item->texture() &&
           (!item->renderContext() || item->renderContext() == _KXCurrentWindowRenderContext) &&
           item->texture()->_isUsableHere();
}

KXTexture* KXTextureCacheLoad(const char* path) {
    if (!path)
        throw std::bad_alloc();
    if (Items* items = itemsOf(path)) {
        const auto found = std::find_if(items->rbegin(), items->rend(), servesCurrentWindow);
        if (found != items->rend()) {
            std::rotate(found.base() - 1, found.base(), items->end()); // becomes the entry
            return items->back()->texture();
        }
    }
    _KXFollowedFile file;
    if (_KXFollowsFiles())
        file.follow(path); // from before it is read
    auto texture = std::make_unique<KXTexture>(path);
    auto item = std::make_unique<_KXTextureCacheItem>(texture.get(), _KXCurrentWindowRenderContext);
    KXTexture* const loaded = texture.release(); // the item has taken it over
    _KXTextureCacheAdd(path, item.release());
    _KXTextureCache.get()[path].file = std::move(file);
    return loaded;
}

void _KXReloadChangedTextures() {
    Cache* const cache = _KXTextureCache.find();
    if (!cache)
        return;
    for (auto& [path, entry] : *cache)
        if (entry.file.hasChanged(path))
            for (const auto& item : entry.items)
                if (item->texture())
                    item->texture()->_reload(path.c_str());
}

void KXTextureCachePurge() {
    ++_KXTextureCacheGeneration;
    _KXTextureCache.free();
}
