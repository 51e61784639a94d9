#include "ui/PicturePreview.h"

#include "core/ground/ErrorSlot.h"
#include "render/GraphicsContext.h"
#include "util/FolderListing.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXImage.h>

#include <algorithm>
#include <cmath>

static bool isPicture(const std::string& path) {
    return _KXFileFilter{{"png", "jpg", "jpeg", "bmp", "gif", "tga", "webp"}}.matchesExtension(path);
}

// Whatever the user looks at, it is no failure of the game's.
void _KXPicturePreview::load(std::uint64_t size, KXSize room) {
    constexpr std::uint64_t longest = 16'000'000;
    _texture = nullptr;
    if (size > longest || !isPicture(_path) || room.width < 1 || room.height < 1)
        return;
    const std::string error = KXError();
    const KXImage image(_path.c_str());
    const auto width = static_cast<float>(image.width()), height = static_cast<float>(image.height());
    if (width > 0) {
        const float scale = std::min({1.0f, room.width / width, room.height / height});
        const auto side = [scale](float whole) { return std::max(1, static_cast<int>(whole * scale)); };
        _texture = std::make_unique<KXTexture>(
            scale < 1 ? image.scaled(side(width), side(height), KXFilterLinear) : image);
    }
    _KXReportError("%s", error.c_str());
}

void _KXPicturePreview::draw(const std::string& path, std::uint64_t size, KXRect place) {
    const KXSize room = place.size;
    if (path != _path || room.width != _room.width || room.height != _room.height ||
        _graphicsContext != _KXCurrentGraphicsContext) {
        _path = path;
        _room = room;
        _graphicsContext = _KXCurrentGraphicsContext;
        load(size, room);
    }
    if (!_texture)
        return;
    const KXSize whole = _texture->size();
    // Small ones grow by whole numbers, so that their pixels stay square.
    const float times =
        std::clamp(std::floor(std::min(room.width / whole.width, room.height / whole.height)), 1.0f, 8.0f);
    KXDrawOptions options;
    options.position = {std::floor(place.origin.x + (room.width - whole.width * times) / 2),
                        std::floor(place.origin.y + (room.height - whole.height * times) / 2)};
    options.scale = {times, times};
    _texture->draw(options);
}
