// What is drawn into an image.

#include <Kobaltrix/KXImage.h>

#include "image/Box.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace {
// A pixel over another, exact to half a step of each channel.
KXPixel over(KXPixel above, KXPixel below) {
    if (above.a == 255)
        return above;
    if (above.a == 0)
        return below;
    const unsigned share = above.a * 255U, rest = below.a * (255U - above.a), sum = share + rest;
    const auto mixed = [=](unsigned a, unsigned b) {
        return static_cast<std::uint8_t>((a * share + b * rest + sum / 2) / sum);
    };
    return {mixed(above.r, below.r), mixed(above.g, below.g), mixed(above.b, below.b),
            static_cast<std::uint8_t>((sum + 127) / 255)};
}

void drawSpan(KXImage& image, int y, int left, int right, KXPixel pixel) {
    KXPixel* const row = image.row(y);
    for (int x = std::max(left, 0), end = std::min(right, image.width()); row && x < end; ++x)
        row[x] = over(pixel, row[x]);
}

void drawBox(KXImage& image, const _KXBox& box, KXPixel pixel) {
    const _KXBox drawn = box.within(image.width(), image.height());
    for (int y = drawn.top; y < drawn.bottom; ++y)
        drawSpan(image, y, drawn.left, drawn.right, pixel);
}

// Hands over the rows that an image at (x, y) shares with another: both pixels, and how many.
template<class EachRow>
void forSharedRows(KXImage& image, const KXImage& other, int x, int y, const EachRow& eachRow) {
    const _KXBox shared =
        _KXBox::at(x, y, other.width(), other.height()).within(image.width(), image.height());
    for (int row = shared.top; row < shared.bottom && !shared.isEmpty(); ++row)
        eachRow(image.row(row) + shared.left, other.row(row - y) + (shared.left - x),
                shared.right - shared.left);
}
} // namespace

void KXImage::fill(KXRect rect, KXColor color) {
    const _KXBox box = _KXBox::of(rect).within(_width, _height);
    for (int y = box.top; y < box.bottom && !box.isEmpty(); ++y)
        std::fill(row(y) + box.left, row(y) + box.right, KXPixelOf(color));
}

void KXImage::paste(const KXImage& image, int x, int y) {
    if (&image == this)
        return paste(KXImage(image), x, y);
    forSharedRows(*this, image, x, y, [](KXPixel* to, const KXPixel* from, int count) {
        std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof *to);
    });
}

void KXImage::draw(const KXImage& image, int x, int y) {
    if (&image == this)
        return draw(KXImage(image), x, y);
    forSharedRows(*this, image, x, y, [](KXPixel* to, const KXPixel* from, int count) {
        for (int i = 0; i < count; ++i)
            to[i] = over(from[i], to[i]);
    });
}

void KXImage::drawRectFill(KXRect rect, KXColor color) { drawBox(*this, _KXBox::of(rect), KXPixelOf(color)); }

void KXImage::drawRect(KXRect rect, KXColor color) {
    const auto [left, top, right, bottom] = _KXBox::of(rect);
    if (left >= right || top >= bottom)
        return;
    const KXPixel pixel = KXPixelOf(color);
    // No pixel twice: it may be half transparent.
    const int inner = std::max(bottom - 1, top + 1), second = std::max(right - 1, left + 1);
    drawBox(*this, {left, top, right, top + 1}, pixel);
    drawBox(*this, {left, inner, right, bottom}, pixel);
    drawBox(*this, {left, top + 1, left + 1, bottom - 1}, pixel);
    drawBox(*this, {second, top + 1, right, bottom - 1}, pixel);
}

void KXImage::drawLine(KXPoint from, KXPoint to, KXColor color) {
    const KXPixel pixel = KXPixelOf(color);
    double x = _KXTruncate(from.x), y = _KXTruncate(from.y);
    const double dx = _KXTruncate(to.x) - x, dy = _KXTruncate(to.y) - y;
    // One pixel for each column or each row, whichever are more, of those that the image has.
    const bool isFlat = std::fabs(dx) >= std::fabs(dy);
    const double start = isFlat ? x : y, way = isFlat ? dx : dy;
    const double first = std::max(std::min(start, start + way), 0.0);
    const double last =
        std::min(std::max(start, start + way), static_cast<double>(isFlat ? _width : _height) - 1);
    for (double at = first; at <= last; ++at) {
        const double part = way == 0 ? 0 : (at - start) / way;
        const int column = _KXTruncate(isFlat ? at : std::floor(x + part * dx + 0.5));
        const int line = _KXTruncate(isFlat ? std::floor(y + part * dy + 0.5) : at);
        if (column >= 0 && column < _width)
            drawSpan(*this, line, column, column + 1, pixel);
    }
}

void KXImage::drawCircleFill(KXPoint centre, float radius, KXColor color) {
    const KXPixel pixel = KXPixelOf(color);
    const double reach = std::fabs(double{radius});
    if (!std::isfinite(reach) || !std::isfinite(centre.x) || !std::isfinite(centre.y))
        return;
    const int top = std::max(_KXTruncate(std::floor(centre.y - reach)), 0);
    const int bottom = std::min(_KXTruncate(std::ceil(centre.y + reach)), _height);
    for (int y = top; y < bottom; ++y) {
        const double away = y + 0.5 - centre.y, half = std::sqrt(std::max(reach * reach - away * away, 0.0));
        // From the first to the last middle that is nearer than the edge.
        drawSpan(*this, y, _KXTruncate(std::floor(centre.x - half - 0.5)) + 1,
                 _KXTruncate(std::ceil(centre.x + half - 0.5)), pixel);
    }
}
