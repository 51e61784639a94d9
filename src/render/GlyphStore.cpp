#include "render/GlyphStore.h"

#include "core/ground/HeapGlobal.h"
#include "render/DrawBatch.h"
#include "render/KXRenderContext.h"

#include <Kobaltrix/KXTypes.h>

#include <algorithm>
#include <map>

// Pages of this side hold all glyphs up to half of it. Larger ones would leave seldom, as one glyph that is
// used keeps all others.
static constexpr int usualSide = 512;
static constinit std::uint32_t lastNumber = 0;

std::size_t _KXGlyphStore::Hash::operator()(const _KXGlyphKey& key) const {
    const auto mixed = [](std::uint64_t high, std::uint64_t low, std::uint64_t factor) {
        const std::uint64_t product = (high << 32 | low) * factor;
        return product ^ product >> 32;
    };
    return mixed(key.font, key.index, 0x9E3779B97F4A7C15) ^ mixed(key.size, key.grown, 0xD6E8FEB86659FD93);
}

const _KXGlyphInk* _KXGlyphStore::find(const _KXGlyphKey& key) {
    const auto found = _inks.find(key);
    return found != _inks.end() && use(found->second.place) ? &found->second : nullptr;
}

const _KXGlyphInk* _KXGlyphStore::add(const _KXGlyphKey& key, const _KXGlyphBitmap& bitmap, KXPoint leftTop) {
    const auto [page, x, y] =
        spotFor(bitmap.width + 2 * _KXGlyphBorder, bitmap.height + 2 * _KXGlyphBorder, bitmap.isColored);
    if (!page)
        return nullptr;
    page->lastUse = _frame;
    page->glyphs.push_back(key);
    _KXUploadGlyph(page->textures, x, y, bitmap);
    ++_made;
    const float side = static_cast<float>(page->side);
    const auto texel = [side](int position) { return static_cast<float>(position) / side; };
    const int left = x + _KXGlyphBorder, top = y + _KXGlyphBorder;
    const _KXGlyphInk ink = {
        page->textures,
        {static_cast<std::uint32_t>(page - _pages.data()), page->number},
        {texel(left), texel(top), texel(left + bitmap.width), texel(top + bitmap.height)},
        leftTop,
        {static_cast<float>(bitmap.width), static_cast<float>(bitmap.height)}};
    return &_inks.insert_or_assign(key, ink).first->second;
}

// The shelf of a page that fits best, or a new one where that would waste much. Null where there is no room.
_KXGlyphStore::Shelf* _KXGlyphStore::shelfFor(Page& page, int width, int height) {
    Shelf* best = nullptr;
    for (Shelf& shelf : page.shelves)
        if (shelf.height >= height && shelf.left + width <= page.side &&
            (!best || shelf.height < best->height))
            best = &shelf;
    constexpr int step = 4; // so that glyphs of about the same height share one
    const int high = std::min((height + step - 1) / step * step, page.side - page.top);
    if ((best && best->height <= height + height / 4 + step) || high < height)
        return best;
    page.shelves.push_back({page.top, high, 0});
    page.top += high;
    return &page.shelves.back();
}

_KXGlyphStore::Spot _KXGlyphStore::spotFor(int width, int height, bool isColored) {
    const auto spotOn = [&](Page& page) {
        Shelf* const shelf = shelfFor(page, width, height);
        if (!shelf)
            return Spot{nullptr, 0, 0};
        const Spot spot = {&page, shelf->left, shelf->top};
        shelf->left += width;
        return spot;
    };
    if (std::max(width, height) <= usualSide / 2)
        for (Page& page : _pages)
            if (page.number && page.isShared && page.textures.isColored == isColored)
                if (const Spot spot = spotOn(page); spot.page)
                    return spot;
    Page* const added = addPage(width, height, isColored);
    return added ? spotOn(*added) : Spot{nullptr, 0, 0};
}

_KXGlyphStore::Page* _KXGlyphStore::addPage(int width, int height, bool isColored) {
    const int longer = std::max(width, height);
    const bool isShared = longer <= usualSide / 2;
    const int side = std::min(isShared ? usualSide : KXNearestPowerOfTwo(longer), _KXLargestTextureSide());
    auto slot = std::ranges::find(_pages, 0u, &Page::number);
    if (slot == _pages.end())
        slot = _pages.emplace(slot);
    const _KXGlyphPage textures = _KXMakeGlyphPage(side, isColored);
    if (!textures.smooth)
        return nullptr;
    *slot = {++lastNumber, textures, side, isShared, _frame};
    fitMemory();
    return &*slot;
}

std::size_t _KXGlyphStore::bytes() const {
    std::size_t sum = 0;
    for (const Page& page : _pages)
        sum += page.number ? _KXBytesOfGlyphPage(page.textures, page.side) : 0;
    return sum;
}

// Where everything is used in this frame there may be more.
void _KXGlyphStore::fitMemory() {
    for (std::size_t all = bytes(); all > _KXGlyphMemory;) {
        Page* oldest = nullptr;
        for (Page& page : _pages)
            if (page.number && page.lastUse < (oldest ? oldest->lastUse : _frame))
                oldest = &page;
        if (!oldest)
            return;
        all -= _KXBytesOfGlyphPage(oldest->textures, oldest->side);
        leave(*oldest);
    }
}

void _KXGlyphStore::leave(Page& page) {
    _KXFlushBatch(KXDrawFlushTextureChange);
    for (const _KXGlyphKey& key : page.glyphs)
        _dropped += static_cast<int>(_inks.erase(key));
    _KXDeleteGlyphPage(page.textures);
    page = Page();
}

void _KXGlyphStore::endFrame() {
    fitMemory();
    ++_frame;
}

void _KXGlyphStore::forget(std::uint32_t font) {
    for (Page& page : _pages) {
        const auto isIts = [font](const _KXGlyphKey& key) { return key.font == font; };
        if (std::erase_if(page.glyphs, isIts) == 0 || !page.glyphs.empty())
            continue;
        if (page.lastUse == _frame)
            _KXFlushBatch(KXDrawFlushTextureChange); // before others come to lie there
        page = {++lastNumber, page.textures, page.side, page.isShared};
    }
    _dropped +=
        static_cast<int>(std::erase_if(_inks, [font](const auto& ink) { return ink.first.font == font; }));
}

KXGlyphStatistics _KXGlyphStore::statistics() const {
    const auto pages = std::ranges::count_if(_pages, [](const Page& page) { return page.number != 0; });
    return {static_cast<int>(_inks.size()), static_cast<int>(pages), bytes(), _made, _dropped};
}

static constinit _KXHeapGlobal<std::map<unsigned, _KXGlyphStore>> stores; // by the number of their context

_KXGlyphStore& _KXGlyphsHere() { return stores.get()[_KXCurrentGraphicsContext]; }

// Null before the first text.
static _KXGlyphStore* storeHere() {
    if (!stores.find())
        return nullptr;
    const auto found = stores.get().find(_KXCurrentGraphicsContext);
    return found != stores.get().end() ? &found->second : nullptr;
}

void _KXEndGlyphFrame() {
    if (_KXGlyphStore* const store = storeHere())
        store->endFrame();
}

void _KXForgetGlyphsIn(unsigned context) {
    if (auto* const all = stores.find(); all && all->erase(context) > 0 && all->empty())
        stores.free();
}

void _KXForgetGlyphsOf(std::uint32_t font) {
    if (auto* const all = stores.find())
        for (auto& [context, store] : *all)
            store.forget(font);
}

KXGlyphStatistics KXCurrentGlyphStatistics() {
    const _KXGlyphStore* const store = storeHere();
    return store ? store->statistics() : KXGlyphStatistics();
}

void KXSetGlyphMemory(std::size_t bytes) { _KXGlyphMemory = bytes; }
