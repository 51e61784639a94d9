#pragma once

#include "Pixels.h"

#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXTexture.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The picture that frames are cut from, which is read anew when its file changes.
class Sheet {
public:
    /// Reads an image file. False, with the reason in KXError() and the picture that there was, if it cannot.
    bool load(const std::string& path);
    /// No picture any more.
    void clear();
    /// To be called in each logic step; looks at the file four times a second. A file that cannot be read,
    /// since it is being written, is read when it has changed again. @return whether the picture is another.
    bool pollChanged();

    /// Shows what was painted on it, or the file's picture again for null. Costs what has changed.
    void show(const std::optional<Pixels>& painted);

    bool isEmpty() const { return _image.width() == 0; }
    int width() const { return _image.width(); }
    int height() const { return _image.height(); }
    const std::string& path() const { return _path; }
    const KXImage& image() const { return _image; }
    /// What the file holds, whatever was painted.
    const KXImage& file() const { return _painted ? _file : _image; }
    /// Another number whenever the picture is another.
    std::uint64_t version() const { return _version; }

    /// For drawing in the current window, empty where there is no picture.
    KXTexture& texture();
    /// Its islands, found when they are first asked for.
    const std::vector<Area>& islands();

private:
    /// What is known of a file without reading it.
    struct Stamp {
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;

        bool operator==(const Stamp&) const = default;
    };
    void changed();
    void changed(KXRect part);
    static std::optional<Stamp> stampOf(const std::string& path);

    std::string _path;
    std::optional<Stamp> _stamp; ///< Of the file when it was last tried.
    double _lookedAt = 0;
    KXImage _image; ///< What is shown,
    KXImage _file;  ///< and what the file holds, where that is something else.
    std::optional<Pixels> _painted;
    std::uint64_t _version = 1;
    std::unique_ptr<KXTexture> _texture;
    KXRect _stale = {{0, 0}, {0, 0}}; ///< The part of the picture that the texture has otherwise.
    std::optional<std::vector<Area>> _islands;
};
