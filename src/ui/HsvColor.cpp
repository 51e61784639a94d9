#include "ui/HsvColor.h"

#include <algorithm>
#include <cmath>

static std::uint8_t byteOf(double channel) {
    return channel > 0 ? static_cast<std::uint8_t>(std::lround(std::min(channel, 1.0) * 255))
                       : std::uint8_t{0};
}

_KXColorBytes _KXBytesOfColor(KXColor color) {
    return {byteOf(color.r), byteOf(color.g), byteOf(color.b), byteOf(color.a)};
}

KXColor _KXColorOfBytes(const _KXColorBytes& bytes) {
    return KXMakeColori(bytes[0], bytes[1], bytes[2], bytes[3]);
}

_KXHsv _KXHsvOf(const _KXColorBytes& bytes, const _KXHsv& before) {
    const double red = bytes[0], green = bytes[1], blue = bytes[2];
    const double most = std::max({red, green, blue}), range = most - std::min({red, green, blue});
    _KXHsv hsv = {before.hue, before.saturation, most / 255};
    if (most > 0)
        hsv.saturation = range / most;
    if (range > 0) {
        const double sixth = most == red     ? (green - blue) / range
                             : most == green ? 2 + (blue - red) / range
                                             : 4 + (red - green) / range;
        hsv.hue = 60 * (sixth < 0 ? sixth + 6 : sixth);
    }
    return hsv;
}

_KXColorBytes _KXBytesOf(const _KXHsv& hsv, std::uint8_t opacity) {
    const auto channel = [&](double offset) { // how far the hue is from where the channel is full
        const double sixth = std::fmod(offset + hsv.hue / 60, 6);
        return byteOf(hsv.value * (1 - hsv.saturation * std::clamp(std::min(sixth, 4 - sixth), 0.0, 1.0)));
    };
    return {channel(5), channel(3), channel(1), opacity};
}
