// Copies of images that are other than they: parts, flipped ones, other sizes.

#include <Kobaltrix/KXImage.h>

#include "image/Box.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

KXImage KXImage::part(KXRect rect) const {
    const _KXBox box = _KXBox::of(rect);
    const auto side = [](int from, int to) { return _KXTruncate(static_cast<double>(to) - from); };
    KXImage copy(side(box.left, box.right), side(box.top, box.bottom));
    constexpr int least = -std::numeric_limits<int>::max(); // which can be negated
    copy.paste(*this, -std::max(box.left, least), -std::max(box.top, least));
    return copy;
}

KXImage KXImage::flipped(int flips) const {
    const int flip = flips & KXFlipDiagonal;
    KXImage copy(*this);
    if (flip == KXFlipDiagonal)
        std::swap(copy._width, copy._height);
    for (int y = 0; y < copy._height; ++y)
        for (int x = 0; x < copy._width; ++x)
            copy.row(y)[x] = flip == KXFlipDiagonal    ? row(x)[y]
                             : flip == KXFlipTopBottom ? row(_height - 1 - y)[x]
                             : flip == KXFlipLeftRight ? row(y)[_width - 1 - x]
                                                       : row(y)[x];
    return copy;
}

namespace {
// How much each of some pixels, side by side, counts for one of the pixels that an axis is scaled to.
struct Weights {
    int first;
    std::vector<float> shares;
};

// A tent as wide as a pixel of whichever size is the smaller number of pixels: where it shrinks, none is left
// out.
std::vector<Weights> linearWeights(int from, int to) {
    const double step = static_cast<double>(from) / to, reach = std::max(step, 1.0);
    std::vector<Weights> all(static_cast<std::size_t>(to));
    for (int i = 0; i < to; ++i) {
        const double middle = (i + 0.5) * step - 0.5;
        Weights& weights = all[static_cast<std::size_t>(i)];
        weights.first = std::max(static_cast<int>(std::ceil(middle - reach)), 0);
        const int last = std::min(static_cast<int>(std::floor(middle + reach)), from - 1);
        double sum = 0;
        for (int at = weights.first; at <= last; ++at) {
            const double share = std::max(1 - std::fabs(at - middle) / reach, 0.0);
            weights.shares.push_back(static_cast<float>(share));
            sum += share;
        }
        for (float& share : weights.shares)
            share = static_cast<float>(share / sum);
    }
    return all;
}

// Colours count by their opacity: what cannot be seen has none to give.
KXColor premultiplied(KXPixel pixel) {
    const KXColor color = KXColorOf(pixel);
    return {color.r * color.a, color.g * color.a, color.b * color.a, color.a};
}

void add(KXColor& sum, KXColor color, float share) {
    sum = {sum.r + color.r * share, sum.g + color.g * share, sum.b + color.b * share,
           sum.a + color.a * share};
}

KXPixel straight(KXColor color) {
    const float part = color.a > 0 ? 1 / color.a : 0;
    return KXPixelOf({color.r * part, color.g * part, color.b * part, color.a});
}

void scaleLinearly(const KXImage& from, KXImage& to) {
    const std::vector<Weights> columns = linearWeights(from.width(), to.width());
    const std::vector<Weights> lines = linearWeights(from.height(), to.height());
    std::vector<KXColor> sums(static_cast<std::size_t>(from.width()));
    for (int y = 0; y < to.height(); ++y) {
        const Weights& line = lines[static_cast<std::size_t>(y)];
        std::fill(sums.begin(), sums.end(), KXColor{0, 0, 0, 0});
        for (int i = 0; i < static_cast<int>(line.shares.size()); ++i)
            for (int x = 0; x < from.width(); ++x)
                add(sums[x], premultiplied(from.row(line.first + i)[x]), line.shares[i]);
        for (int x = 0; x < to.width(); ++x) {
            const Weights& column = columns[static_cast<std::size_t>(x)];
            KXColor color = {0, 0, 0, 0};
            for (std::size_t i = 0; i < column.shares.size(); ++i)
                add(color, sums[static_cast<std::size_t>(column.first) + i], column.shares[i]);
            to.row(y)[x] = straight(color);
        }
    }
}
} // namespace

KXImage KXImage::scaled(int width, int height, KXFilter filter) const {
    if (_pixels.empty())
        return {};
    KXImage copy(width, height);
    if (filter == KXFilterLinear && copy._width > 0) {
        scaleLinearly(*this, copy);
        return copy;
    }
    const auto nearest = [](int at, int from, int to) {
        return static_cast<int>((2LL * at + 1) * from / (2LL * to)); // below its middle
    };
    for (int y = 0; y < copy._height; ++y)
        for (int x = 0; x < copy._width; ++x)
            copy.row(y)[x] = row(nearest(y, _height, height))[nearest(x, _width, width)];
    return copy;
}
