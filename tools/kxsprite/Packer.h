#pragma once

#include "Document.h"

#include <Kobaltrix/KXImage.h>

#include <unordered_map>

/// How pictures lie on a sheet.
struct PackSettings {
    int padding = 1; ///< Transparent pixels between two, so that one drawn smoothly shows none of the other.
    int extrude = 0; ///< Pixels by which the edges go on, for frames that are put side by side without a gap.
};

/// The most pixels of a sheet's side: what every graphics driver of today can hold.
inline constexpr int largestSheetSide = 16384;

/// Pictures on one sheet.
struct PackedSheet {
    KXImage image;
    std::vector<Area> places; ///< Of the pictures by their numbers, without what was put around.
    int percentFull = 0;      ///< How much of the sheet they cover.
};

/// Puts pictures on one sheet, the same pictures in the same way each time.
class Packer {
public:
    explicit Packer(const PackSettings& settings) : _settings(settings) {}

    /// Adds a picture, which is not empty. @return its number; that of a former one if they are the same.
    /// Throws a Fault once there are more than any sheet can hold.
    std::size_t add(KXImage picture);
    /// The sheet, as small as may be, and about as high as wide. Throws a Fault if they do not fit on one.
    PackedSheet pack() const;

private:
    int around() const { return _settings.padding + 2 * _settings.extrude; }
    void draw(const KXImage& picture, int x, int y, KXImage& sheet) const;

    PackSettings _settings;
    std::vector<KXImage> _pictures;
    std::unordered_multimap<std::size_t, std::size_t> _byContent; ///< Numbers by a hash.
    std::int64_t _area = 0;                                       ///< With what is around.
};
