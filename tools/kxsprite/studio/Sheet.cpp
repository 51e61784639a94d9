#include "Sheet.h"

#include "IslandFinder.h"

#include <Kobaltrix/KXLogicLoop.h>

#include <utility>

std::optional<Sheet::Stamp> Sheet::stampOf(const std::string& path) {
    std::error_code error;
    Stamp stamp;
    stamp.time = std::filesystem::last_write_time(path, error);
    if (!error)
        stamp.size = std::filesystem::file_size(path, error);
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
    _islands.reset();
    ++_version;
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
    painted->drawInto(_image, _painted ? *_painted : Pixels());
    _painted = painted;
    changed();
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
    if (std::exchange(_uploaded, _version) != _version)
        _texture->setImage(_image);
    return *_texture;
}

const std::vector<Area>& Sheet::islands() {
    if (!_islands)
        _islands = findIslands(_image);
    return *_islands;
}
