#include "Chunks.h"

namespace {
enum LayerFlag : unsigned { Visible = 1, Background = 8, Reference = 64 };

constexpr int deepestGroup = 256;
constexpr std::int64_t mostGroupPixels = std::int64_t{256} << 20;

/// Finds the group that a layer is in, which follows from the layer before it, and its place there.
void putIntoGroup(AseLayer& layer, AseBytes& chunk, AseSprite& sprite) {
    const int number = static_cast<int>(sprite.layers.size()), last = number - 1;
    const int lastLevel = last < 0 ? -1 : sprite.layers.back().level;
    if (layer.level > lastLevel + 1 || layer.level > deepestGroup)
        chunk.fail("the layer is " + std::to_string(layer.level) + " levels deep, that before it " +
                   std::to_string(lastLevel));
    if (layer.level > lastLevel) {
        if (last >= 0 && sprite.layers.back().kind != AseLayer::Kind::Group)
            chunk.fail("the layer lies in one that is no group");
        layer.parent = last;
        return;
    }
    AseLayer* sibling = &sprite.layers.back();
    while (sibling->level > layer.level)
        sibling = &sprite.layers[static_cast<std::size_t>(sibling->parent)];
    layer.parent = sibling->parent;
    layer.place = sibling->place + 1;
    sibling->next = number;
}

AseLayer::Kind kindOf(int number) {
    using Kind = AseLayer::Kind;
    return number == 0   ? Kind::Image
           : number == 1 ? Kind::Group
           : number == 2 ? Kind::Tilemap
                         : Kind::Unknown;
}
} // namespace

void readLayer(AseBytes& chunk, bool opacityCounts, AseSprite& sprite) {
    AseLayer layer;
    const unsigned flags = chunk.u16();
    layer.kind = kindOf(chunk.u16());
    layer.level = chunk.u16();
    putIntoGroup(layer, chunk, sprite);
    chunk.skip(4);
    const int blendMode = chunk.u16();
    const std::uint8_t opacity = chunk.u8();
    chunk.skip(3);
    layer.name = chunk.text();
    const bool isGroup = layer.kind == AseLayer::Kind::Group;
    layer.isBackground = flags & Background && layer.kind == AseLayer::Kind::Image;
    layer.isShown = flags & Visible && !(flags & Reference) &&
                    (layer.parent < 0 || sprite.layers[static_cast<std::size_t>(layer.parent)].isShown);
    if (!layer.isBackground && (!isGroup || sprite.composesGroups)) {
        layer.blendMode = blendMode;
        layer.opacity = opacityCounts ? opacity : 255;
    }
    // Each group that is being drawn has a canvas of its own, besides that of the frame.
    if (isGroup && sprite.composesGroups &&
        std::int64_t{sprite.width} * sprite.height * (layer.level + 2) > mostGroupPixels)
        chunk.fail("the groups are too deep for a canvas so large");
    sprite.layers.push_back(std::move(layer));
}
