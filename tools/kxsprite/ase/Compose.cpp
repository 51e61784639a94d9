#include "AseSprite.h"
#include "Blend.h"

#include <Kobaltrix/KXError.h>

#include <algorithm>
#include <climits>

namespace {
/// Something to be drawn: a cel, or a group that is a picture of its own.
struct Item {
    int order, z;
    const AseLayer* layer;
    const AseCel* cel; ///< Null for a group.
};

class Composer {
public:
    Composer(const AseSprite& sprite, const AseFrame& frame) : _sprite(sprite), _frame(frame) {
        if (sprite.bytesPerPixel == 1)
            _palette = &sprite.palettes[frame.palette];
    }

    KXImage compose() const {
        KXImage image = canvas();
        if (_palette && std::ranges::any_of(_sprite.layers, isVisibleBackground))
            image.fill(KXColorOf(colorOf(_sprite.transparentIndex)));
        draw(_sprite.composesGroups ? itemsOf(-1) : allCels(), image);
        for (int y = 0; y < image.height(); ++y)
            for (KXPixel *pixel = image.row(y), *end = pixel + image.width(); pixel != end; ++pixel)
                if (pixel->a == 0)
                    *pixel = {0, 0, 0, 0};
        return image;
    }

private:
    static bool isVisibleBackground(const AseLayer& layer) { return layer.isBackground && layer.isShown; }

    KXImage canvas() const {
        KXImage image(_sprite.width, _sprite.height);
        if (image.width() == 0)
            throw Fault(KXError());
        return image;
    }

    KXPixel colorOf(int index) const {
        return static_cast<std::size_t>(index) < _palette->size()
                   ? (*_palette)[static_cast<std::size_t>(index)]
                   : KXPixel{0, 0, 0, 0};
    }

    Item itemOf(const AseCel& cel, int number) const {
        const AseLayer& layer = _sprite.layers[static_cast<std::size_t>(cel.layer)];
        return {layer.isBackground ? INT_MIN : number + cel.z, cel.z, &layer, &cel};
    }

    std::vector<Item> allCels() const {
        std::vector<Item> items;
        for (const AseCel& cel : _frame.cels)
            items.push_back(itemOf(cel, cel.layer));
        return items;
    }

    /// What is right in a group; -1 for what is in none.
    std::vector<Item> itemsOf(int group) const {
        std::vector<Item> items;
        const int count = static_cast<int>(_sprite.layers.size());
        int number = group + 1;
        if (number == count || _sprite.layers[static_cast<std::size_t>(number)].parent != group)
            return items;
        for (; number >= 0; number = _sprite.layers[static_cast<std::size_t>(number)].next) {
            const AseLayer& layer = _sprite.layers[static_cast<std::size_t>(number)];
            const auto cel = std::ranges::lower_bound(_frame.cels, number, {}, &AseCel::layer);
            if (layer.kind == AseLayer::Kind::Group && layer.isShown)
                items.push_back({layer.place, 0, &layer, nullptr});
            else if (cel != _frame.cels.end() && cel->layer == number)
                items.push_back(itemOf(*cel, layer.place));
        }
        return items;
    }

    void draw(std::vector<Item> items, KXImage& onto) const {
        std::ranges::stable_sort(items, [](const Item& a, const Item& b) {
            return a.order != b.order ? a.order < b.order : a.z < b.z;
        });
        for (const Item& item : items) {
            if (item.cel)
                drawCel(*item.cel, *item.layer, onto);
            else
                drawGroup(*item.layer, onto);
        }
    }

    AseBlender blender(const AseLayer& layer, int opacity) const {
        return {layer.blendMode, aseMultiply(opacity, layer.opacity), _sprite.bytesPerPixel == 2};
    }

    void drawGroup(const AseLayer& group, KXImage& onto) const {
        std::vector<Item> items = itemsOf(static_cast<int>(&group - _sprite.layers.data()));
        if (items.empty())
            return;
        KXImage picture = canvas();
        draw(std::move(items), picture);
        const AseBlender blend = blender(group, 255);
        for (int y = 0; y < onto.height(); ++y)
            std::transform(onto.row(y), onto.row(y) + onto.width(), picture.row(y), onto.row(y), blend);
    }

    void drawCel(const AseCel& cel, const AseLayer& layer, KXImage& onto) const {
        const AsePicture& picture = _sprite.pictures[cel.picture];
        const AseBlender blend = blender(layer, cel.opacity);
        const int left = std::max(0, cel.x), right = std::min(onto.width(), cel.x + picture.width);
        const int bottom = std::min(onto.height(), cel.y + picture.height);
        for (int y = std::max(0, cel.y); y < bottom; ++y) {
            const auto size = static_cast<std::size_t>(_sprite.bytesPerPixel);
            const auto first = static_cast<std::size_t>(y - cel.y) * static_cast<std::size_t>(picture.width);
            const char* row = picture.pixels.data() + first * size;
            KXPixel* to = onto.row(y);
            for (int x = left; x < right; ++x)
                to[x] = blend(to[x], pixelAt(row + static_cast<std::size_t>(x - cel.x) * size));
        }
    }

    KXPixel pixelAt(const char* bytes) const {
        const auto byte = [bytes](int i) { return static_cast<std::uint8_t>(bytes[i]); };
        switch (_sprite.bytesPerPixel) {
        case 1:
            return byte(0) == _sprite.transparentIndex ? KXPixel{0, 0, 0, 0} : colorOf(byte(0));
        case 2:
            return {byte(0), byte(0), byte(0), byte(1)};
        default:
            return {byte(0), byte(1), byte(2), byte(3)};
        }
    }

    const AseSprite& _sprite;
    const AseFrame& _frame;
    const AsePalette* _palette = nullptr; ///< Of sprites with indices.
};
} // namespace

KXImage composeFrame(const AseSprite& sprite, std::size_t frame) {
    return Composer(sprite, sprite.frames[frame]).compose();
}

std::uint64_t composingCost(const AseSprite& sprite, std::size_t frame) {
    const std::uint64_t canvas =
        static_cast<std::uint64_t>(sprite.width) * static_cast<std::uint64_t>(sprite.height);
    std::uint64_t cost = canvas + sprite.layers.size();
    if (sprite.composesGroups)
        cost += canvas * static_cast<std::uint64_t>(
                             std::ranges::count(sprite.layers, AseLayer::Kind::Group, &AseLayer::kind));
    for (const AseCel& cel : sprite.frames[frame].cels)
        cost += std::min<std::uint64_t>(sprite.pictures[cel.picture].pixels.size(), canvas);
    return cost;
}
