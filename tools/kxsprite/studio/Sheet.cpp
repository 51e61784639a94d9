#include "Sheet.h"

#include "../Paths.h"
#include "IslandFinder.h"

#include <Kobaltrix/KXLogicLoop.h>

#include <algorithm>
#include <utility>

std::optional<Sheet::Stamp> Sheet::stampOf(const std::string& path) {
    std::error_code error;
    Stamp stamp;
    stamp.time = std::filesystem::last_write_time(pathOf(path), error);
    if (!error)
        stamp.size = std::filesystem::file_size(pathOf(path), error);
    return error ? std::nullopt : std::optional(stamp);
}

// The stamp is taken before the file is read: what is written meanwhile is then seen to be newer.
bool Sheet::load(const std::string& path) {
    const std::optional<Stamp> stamp = stampOf(path);
    KXImage read;
    if (!read.load(path.c_str()))
        return false;
    _path = path;
    _stamp = stamp;
    _lookedAt = KXTime();
    (_painted ? _file : _image) = std::move(read);
    changed();
    return true;
}

void Sheet::clear() {
    _path.clear();
    _stamp.reset();
    _painted.reset();
    _file = _image = KXImage();
    changed();
}

void Sheet::changed() {
    changed({{0, 0}, {static_cast<float>(_image.width()), static_cast<float>(_image.height())}});
}

void Sheet::changed(KXRect part) {
    _islands.reset();
    ++_version;
    const auto [origin, size] = _stale;
    if (size.width > 0) {
        const float right = std::max(part.origin.x + part.size.width, origin.x + size.width),
                    bottom = std::max(part.origin.y + part.size.height, origin.y + size.height);
        part.origin = {std::min(part.origin.x, origin.x), std::min(part.origin.y, origin.y)};
        part.size = {right - part.origin.x, bottom - part.origin.y};
    }
    _stale = part;
}

void Sheet::show(const std::optional<Pixels>& painted) {
    if (!painted && !_painted)
        return;
    if (!painted) {
        _image = std::exchange(_file, KXImage());
        _painted.reset();
        return changed();
    }
    if (_painted && painted->shares(*_painted))
        return;
    if (!_painted)
        _file = _image;
    changed(painted->drawInto(_image, _painted ? *_painted : Pixels()));
    _painted = painted;
}

bool Sheet::pollChanged() {
    constexpr double rest = 0.25; // seconds
    if (_path.empty() || KXTime() - _lookedAt < rest)
        return false;
    _lookedAt = KXTime();
    const std::optional<Stamp> stamp = stampOf(_path);
    if (!stamp || stamp == _stamp)
        return false;
    _stamp = stamp;
    return load(std::string(_path));
}

KXTexture& Sheet::texture() {
    if (!_texture)
        _texture = std::make_unique<KXTexture>();
    const auto [origin, size] = std::exchange(_stale, KXRect{{0, 0}, {0, 0}});
    const KXSize has = _texture->size();
    if (has.width != static_cast<float>(_image.width()) || has.height != static_cast<float>(_image.height()))
        _texture->setImage(_image);
    else if (size.width > 0)
        _texture->setPart(_image.part({origin, size}), static_cast<int>(origin.x),
                          static_cast<int>(origin.y));
    return *_texture;
}

const std::vector<Area>& Sheet::islands() {
    if (!_islands)
        _islands = findIslands(_image);
    return *_islands;
}
