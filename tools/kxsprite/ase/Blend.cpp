#include "Blend.h"

#include <algorithm>
#include <cmath>
#include <iterator>

// A pixel's colour is mixed first, whatever the opacities; how much of that is seen comes after.

namespace {
using Channel = std::uint8_t;

Channel byteOf(int value) { return static_cast<Channel>(value); }

/// a / b of the range 0 to 255.
int divided(int a, int b) { return (a * 255 + b / 2) / b; }

int multiply(int b, int s) { return aseMultiply(b, s); }
int screen(int b, int s) { return b + s - aseMultiply(b, s); }
int hardLight(int b, int s) { return s < 128 ? multiply(b, 2 * s) : screen(b, 2 * s - 255); }
int overlay(int b, int s) { return hardLight(s, b); }
int darken(int b, int s) { return std::min(b, s); }
int lighten(int b, int s) { return std::max(b, s); }
int dodge(int b, int s) { return b == 0 ? 0 : b >= 255 - s ? 255 : divided(b, 255 - s); }
int burn(int b, int s) { return b == 255 ? 255 : 255 - b >= s ? 0 : 255 - divided(255 - b, s); }
int softLight(int backdrop, int source) {
    const double b = backdrop / 255.0, s = source / 255.0;
    const double d = b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
    const double mixed = s <= 0.5 ? b - (1 - 2 * s) * b * (1 - b) : b + (2 * s - 1) * (d - b);
    return static_cast<int>(mixed * 255 + 0.5);
}
int difference(int b, int s) { return std::abs(b - s); }
int exclusion(int b, int s) { return b + s - 2 * aseMultiply(b, s); }
int addition(int b, int s) { return std::min(b + s, 255); }
int subtract(int b, int s) { return std::max(b - s, 0); }
int divide(int b, int s) { return b == 0 ? 0 : b >= s ? 255 : divided(b, s); }

template<int (*channel)(int, int)>
KXPixel each(KXPixel b, KXPixel s) {
    return {byteOf(channel(b.r, s.r)), byteOf(channel(b.g, s.g)), byteOf(channel(b.b, s.b)), s.a};
}

/// A colour between 0 and 1, and beyond on its way.
struct Color {
    double r, g, b;

    explicit Color(KXPixel pixel) : r(pixel.r / 255.0), g(pixel.g / 255.0), b(pixel.b / 255.0) {}

    double least() const { return std::min({r, g, b}); }
    double most() const { return std::max({r, g, b}); }
    double luminosity() const { return 0.3 * r + 0.59 * g + 0.11 * b; }
    double saturation() const { return most() - least(); }

    template<typename Change>
    Color changed(Change change) const {
        Color color = *this;
        for (double* channel : {&color.r, &color.g, &color.b})
            *channel = change(*channel);
        return color;
    }
    Color withSaturation(double wanted) const {
        const double low = least(), range = saturation();
        return changed([=](double c) { return range > 0 ? (c - low) * wanted / range : 0; });
    }
    Color withLuminosity(double wanted) const {
        const double missing = wanted - luminosity();
        Color color = changed([=](double c) { return c + missing; });
        const double l = color.luminosity(), low = color.least(), high = color.most();
        if (low < 0)
            color = color.changed([=](double c) { return l + (c - l) * l / (l - low); });
        if (high > 1)
            color = color.changed([=](double c) { return l + (c - l) * (1 - l) / (high - l); });
        return color;
    }
    KXPixel withAlpha(Channel alpha) const {
        return {byteOf(static_cast<int>(255 * r)), byteOf(static_cast<int>(255 * g)),
                byteOf(static_cast<int>(255 * b)), alpha};
    }
};

KXPixel hue(KXPixel backdrop, KXPixel source) {
    const Color b(backdrop), s(source);
    return s.withSaturation(b.saturation()).withLuminosity(b.luminosity()).withAlpha(source.a);
}
KXPixel saturation(KXPixel backdrop, KXPixel source) {
    const Color b(backdrop), s(source);
    return b.withSaturation(s.saturation()).withLuminosity(b.luminosity()).withAlpha(source.a);
}
KXPixel color(KXPixel backdrop, KXPixel source) {
    return Color(source).withLuminosity(Color(backdrop).luminosity()).withAlpha(source.a);
}
KXPixel luminosity(KXPixel backdrop, KXPixel source) {
    return Color(backdrop).withLuminosity(Color(source).luminosity()).withAlpha(source.a);
}

constexpr int firstOfColors = 12, lastOfColors = 15;
constexpr KXPixel (*mixes[])(KXPixel, KXPixel) = {
    nullptr,     each<multiply>, each<screen>,    each<overlay>,   each<darken>,     each<lighten>,
    each<dodge>, each<burn>,     each<hardLight>, each<softLight>, each<difference>, each<exclusion>,
    hue,         saturation,     color,           luminosity,      each<addition>,   each<subtract>,
    each<divide>};

/// From one pixel towards another, as far as the weight of 255 says.
KXPixel merged(KXPixel x, KXPixel y, int weight) {
    const int alpha = x.a + aseMultiply(y.a - x.a, weight);
    if (alpha == 0)
        return {0, 0, 0, 0};
    const auto channel = [&](int from, int to) {
        return byteOf(x.a == 0 ? to : y.a == 0 ? from : from + aseMultiply(to - from, weight));
    };
    return {channel(x.r, y.r), channel(x.g, y.g), channel(x.b, y.b), byteOf(alpha)};
}
} // namespace

AseBlender::AseBlender(int mode, int opacity, bool gray) : _mix(nullptr), _opacity(opacity) {
    const bool isKnown = mode >= 0 && mode < static_cast<int>(std::size(mixes));
    if (isKnown && !(gray && mode >= firstOfColors && mode <= lastOfColors))
        _mix = mixes[mode];
}

KXPixel AseBlender::over(KXPixel backdrop, KXPixel source) const {
    const int alpha = aseMultiply(source.a, _opacity);
    if (backdrop.a == 0)
        return {source.r, source.g, source.b, byteOf(alpha)};
    if (source.a == 0)
        return backdrop;
    const int result = alpha + backdrop.a - aseMultiply(backdrop.a, alpha);
    const auto channel = [&](int b, int s) { return byteOf(b + (s - b) * alpha / result); };
    return {channel(backdrop.r, source.r), channel(backdrop.g, source.g), channel(backdrop.b, source.b),
            byteOf(result)};
}

KXPixel AseBlender::operator()(KXPixel backdrop, KXPixel source) const {
    const KXPixel plain = over(backdrop, source);
    if (!_mix || backdrop.a == 0 || source.a == 0)
        return plain;
    const KXPixel mixed = over(backdrop, _mix(backdrop, source));
    const int weight = aseMultiply(backdrop.a, aseMultiply(source.a, _opacity));
    return merged(merged(plain, mixed, backdrop.a), mixed, weight);
}
