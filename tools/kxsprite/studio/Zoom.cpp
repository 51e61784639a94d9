#include "Zoom.h"

#include <algorithm>
#include <cmath>
#include <iterator>

static constexpr float scales[] = {0.125f, 0.25f, 0.5f, 1, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64};

float Zoom::scale() const { return scales[_step]; }

// Its corner lies on a whole point, so that pixels are sharp at any place.
KXPoint Zoom::fromPicture(const KXRect& view, KXPoint place) const {
    const auto along = [this](float begin, float length, float centre, float at) {
        return std::round(begin + length / 2 - centre * scale()) + at * scale();
    };
    return {along(view.origin.x, view.size.width, _centre.x, place.x),
            along(view.origin.y, view.size.height, _centre.y, place.y)};
}

KXRect Zoom::fromPicture(const KXRect& view, const Area& area) const {
    const float width = static_cast<float>(area.width), height = static_cast<float>(area.height);
    return {fromPicture(view, KXPoint{area.x, area.y}), {width * scale(), height * scale()}};
}

KXPoint Zoom::toPicture(const KXRect& view, KXPoint point) const {
    const KXPoint corner = fromPicture(view, KXPoint{0, 0});
    return {(point.x - corner.x) / scale(), (point.y - corner.y) / scale()};
}

void Zoom::zoomAt(const KXRect& view, KXPoint point, int steps) {
    const KXPoint before = toPicture(view, point);
    _step = std::clamp(_step + steps, 0, static_cast<int>(std::size(scales)) - 1);
    _centre = {before.x - (point.x - view.origin.x - view.size.width / 2) / scale(),
               before.y - (point.y - view.origin.y - view.size.height / 2) / scale()};
}

void Zoom::fit(const KXRect& view, const Area& part) {
    const float width = static_cast<float>(part.width), height = static_cast<float>(part.height);
    constexpr float rim = 8; // points on each side
    _step = static_cast<int>(std::size(scales)) - 1;
    while (_step > 0 &&
           (width * scale() > view.size.width - 2 * rim || height * scale() > view.size.height - 2 * rim))
        --_step;
    _centre = {part.x + width / 2, part.y + height / 2};
}

void Zoom::pan(KXPoint points) { _centre = {_centre.x - points.x / scale(), _centre.y - points.y / scale()}; }

void Zoom::reveal(const KXRect& view, const Area& part) {
    const KXRect seen = fromPicture(view, part);
    const auto missing = [](float begin, float length, float from, float room) {
        return begin < from                   ? from - begin
               : begin + length > from + room ? std::max(from - begin, from + room - begin - length)
                                              : 0;
    };
    pan({missing(seen.origin.x, seen.size.width, view.origin.x, view.size.width),
         missing(seen.origin.y, seen.size.height, view.origin.y, view.size.height)});
}

void Zoom::stayOn(const Area& part) {
    _centre = {std::clamp(_centre.x, part.x, part.x + static_cast<float>(part.width)),
               std::clamp(_centre.y, part.y, part.y + static_cast<float>(part.height))};
}
