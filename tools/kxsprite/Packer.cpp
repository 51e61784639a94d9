#include "Packer.h"

#include <Kobaltrix/KXError.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>

#define STBRP_STATIC
#include <stb/stb_rect_pack.h>

// What is as large keeps its order, which sorting by the C library does not promise.
static void sortRects(void* rects, std::size_t count, std::size_t, int (*compare)(const void*, const void*)) {
    auto* first = static_cast<stbrp_rect*>(rects);
    std::stable_sort(first, first + count,
                     [compare](const stbrp_rect& a, const stbrp_rect& b) { return compare(&a, &b) < 0; });
}
#define STBRP_SORT sortRects
#define STB_RECT_PACK_IMPLEMENTATION
#include <stb/stb_rect_pack.h>

namespace {
constexpr std::size_t mostTries = 48, mostTriedRects = 200000;

/// Rectangles side by side, and the sheet that they need.
struct Arrangement {
    int width = 0, height = 0;
    std::vector<stbrp_rect> rects;

    /// The better of two comes first: the smaller one, with what lies between pictures, so that long sheets
    /// gain nothing by having little of that; then that nearer to a square.
    auto worth(int padding) const {
        return std::tuple(std::int64_t{width + padding} * (height + padding), std::abs(width - height),
                          height);
    }
};

[[noreturn]] void doesNotFit() {
    throw Fault("the pictures do not fit on a sheet of " + std::to_string(largestSheetSide) + " x " +
                std::to_string(largestSheetSide) + " pixels");
}

/// @param padding which each rectangle has at its right and bottom, and the sheet's edge does not need.
std::optional<Arrangement> arrange(std::vector<stbrp_rect> rects, int width, int padding) {
    stbrp_context context;
    std::vector<stbrp_node> nodes(static_cast<std::size_t>(width));
    stbrp_init_target(&context, width, largestSheetSide + padding, nodes.data(), width);
    if (!stbrp_pack_rects(&context, rects.data(), static_cast<int>(rects.size())))
        return std::nullopt;
    Arrangement arrangement = {0, 0, std::move(rects)};
    for (const stbrp_rect& rect : arrangement.rects) {
        arrangement.width = std::max(arrangement.width, rect.x + rect.w - padding);
        arrangement.height = std::max(arrangement.height, rect.y + rect.h - padding);
    }
    return arrangement;
}

/// Widths worth trying: from half to twice the side of a square, and those that whole columns of the widest
/// picture fill.
std::set<int> widthsToTry(const std::vector<stbrp_rect>& rects, std::int64_t area, int padding) {
    const int widest = std::ranges::max(rects, {}, &stbrp_rect::w).w, most = largestSheetSide + padding;
    const int side = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(area))));
    const int from = std::max(widest, side / 2), to = std::max(from, std::min(2 * side, most));
    const auto tries = static_cast<int>(std::clamp<std::size_t>(mostTriedRects / rects.size(), 4, mostTries));
    std::set<int> widths = {from};
    for (int i = 1; i <= tries; ++i)
        widths.insert(from + static_cast<int>(std::int64_t{to - from} * i / tries));
    const int columns = side / widest + 1;
    for (int count = std::max(1, columns - tries / 2); count <= columns + tries / 2; ++count)
        if (std::int64_t{count} * widest >= from && std::int64_t{count} * widest <= to)
            widths.insert(count * widest);
    return widths;
}

std::string_view bytesOf(const KXImage& picture) {
    const auto pixels =
        static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height());
    return {reinterpret_cast<const char*>(picture.row(0)), pixels * sizeof(KXPixel)};
}
} // namespace

std::size_t Packer::add(KXImage picture) {
    const std::size_t hash = std::hash<std::string_view>()(bytesOf(picture));
    const auto [begin, end] = _byContent.equal_range(hash);
    for (auto known = begin; known != end; ++known) {
        const KXImage& other = _pictures[known->second];
        if (other.width() == picture.width() && bytesOf(other) == bytesOf(picture))
            return known->second;
    }
    _area += std::int64_t{picture.width() + around()} * (picture.height() + around());
    if (_area > std::int64_t{largestSheetSide + around()} * (largestSheetSide + around()))
        doesNotFit();
    _byContent.emplace(hash, _pictures.size());
    _pictures.push_back(std::move(picture));
    return _pictures.size() - 1;
}

PackedSheet Packer::pack() const {
    std::vector<stbrp_rect> rects;
    for (const KXImage& picture : _pictures)
        rects.push_back({0, picture.width() + around(), picture.height() + around(), 0, 0, 0});
    std::optional<Arrangement> best;
    if (!rects.empty())
        for (const int width : widthsToTry(rects, _area, _settings.padding)) {
            std::optional<Arrangement> arrangement = arrange(rects, width, _settings.padding);
            if (arrangement &&
                (!best || arrangement->worth(_settings.padding) < best->worth(_settings.padding)))
                best = std::move(arrangement);
        }
    if (!best || best->width > largestSheetSide || best->height > largestSheetSide)
        doesNotFit();

    PackedSheet sheet = {KXImage(best->width, best->height), {}, 0};
    if (sheet.image.width() == 0)
        throw Fault(KXError());
    std::int64_t covered = 0;
    for (std::size_t i = 0; i < _pictures.size(); ++i) {
        const KXImage& picture = _pictures[i];
        const int x = best->rects[i].x + _settings.extrude, y = best->rects[i].y + _settings.extrude;
        draw(picture, x, y, sheet.image);
        covered += std::int64_t{picture.width()} * picture.height();
        sheet.places.push_back(
            {static_cast<float>(x), static_cast<float>(y), picture.width(), picture.height()});
    }
    sheet.percentFull = static_cast<int>(100 * covered / (std::int64_t{best->width} * best->height));
    return sheet;
}

void Packer::draw(const KXImage& picture, int x, int y, KXImage& sheet) const {
    const int extrude = _settings.extrude, width = picture.width(), height = picture.height();
    for (int row = -extrude; row < height + extrude; ++row) {
        const KXPixel* from = picture.row(std::clamp(row, 0, height - 1));
        KXPixel* to = sheet.row(y + row) + x;
        std::fill(to - extrude, to, from[0]);
        std::copy(from, from + width, to);
        std::fill(to + width, to + width + extrude, from[width - 1]);
    }
}
