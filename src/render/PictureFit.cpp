#include "render/PictureFit.h"

#include <algorithm>
#include <cmath>

bool _KXIsLogical(const KXLogicalSize& logical) {
    const auto isSide = [](float side) { return side > 0 && std::isfinite(side); };
    return isSide(logical.size.width) && isSide(logical.size.height);
}

_KXPictureFit _KXFitPicture(const KXLogicalSize& logical, KXSize window, float density) {
    const float width = std::max(1.0f, window.width), height = std::max(1.0f, window.height);
    const KXRect all = {{0, 0}, {width, height}};
    if (!_KXIsLogical(logical))
        return {all, all.size};
    const KXSize wanted = logical.size;
    float scale = std::min(width / wanted.width, height / wanted.height); // points to a unit
    switch (logical.scaling) {
    case KXScalingStretch:
        return {all, wanted};
    case KXScalingExpand:
        return {all, {std::max(wanted.width, width / scale), std::max(wanted.height, height / scale)}};
    case KXScalingWholeMultiples:
        // A multiple that fits but for the last bit fits.
        if (const float multiple = std::floor(scale * density * (1 + 1e-6f)); multiple >= 1)
            scale = multiple / density;
        break;
    default:
        break;
    }
    const KXSize size = {wanted.width * scale, wanted.height * scale};
    // On whole pixels, so that a multiple shows each unit in the same way.
    const auto before = [density](float room) {
        return std::floor(std::max(0.0f, room) / 2 * density) / density;
    };
    return {{{before(width - size.width), before(height - size.height)}, size}, wanted};
}

KXRect _KXPictureFit::toPoints(KXRect rect) const {
    // A rectangle that is none, or is no number, is an empty one.
    const auto within = [](float value, float low, float size) {
        return std::isnan(value) ? low : std::clamp(value, low, low + size);
    };
    const KXPoint from = toPoints(rect.origin);
    const KXPoint to = toPoints(KXPoint{rect.origin.x + rect.size.width, rect.origin.y + rect.size.height});
    const float left = within(from.x, part.origin.x, part.size.width),
                top = within(from.y, part.origin.y, part.size.height),
                right = within(to.x, part.origin.x, part.size.width),
                bottom = within(to.y, part.origin.y, part.size.height);
    return {{left, top}, {std::max(0.0f, right - left), std::max(0.0f, bottom - top)}};
}

_KXPixelBox _KXPixelsOf(KXRect part, KXSize window, int width, int height) {
    const auto pixel = [](float points, float size, int pixels) {
        return static_cast<int>(std::lround(points / std::max(1.0f, size) * static_cast<float>(pixels)));
    };
    const int left = pixel(part.origin.x, window.width, width),
              top = pixel(part.origin.y, window.height, height),
              right = pixel(part.origin.x + part.size.width, window.width, width),
              bottom = pixel(part.origin.y + part.size.height, window.height, height);
    return {left, height - bottom, right - left, bottom - top};
}
