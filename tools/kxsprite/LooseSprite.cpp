#include "LooseSprite.h"

#include <algorithm>
#include <climits>
#include <iterator>

namespace {
/// From its first pixel to the one after its last.
struct Span {
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;

    bool isEmpty() const { return left >= right; }
    void include(int l, int t, int r, int b) {
        left = std::min(left, l);
        top = std::min(top, t);
        right = std::max(right, r);
        bottom = std::max(bottom, b);
    }
};

Span seenOf(const KXImage& canvas) {
    const auto isSeen = [](const KXPixel& pixel) { return pixel.a != 0; };
    Span span;
    for (int y = 0; y < canvas.height(); ++y) {
        const KXPixel *begin = canvas.row(y), *end = begin + canvas.width();
        const KXPixel* first = std::find_if(begin, end, isSeen);
        if (first == end)
            continue;
        const auto last = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isSeen);
        span.include(static_cast<int>(first - begin), y, static_cast<int>(last.base() - begin), y + 1);
    }
    return span;
}

/// What is kept of a sprite's canvas. Something always is: a frame has a size.
Span keptOf(const LooseSprite& sprite, bool trim) {
    Span kept;
    for (const LoosePicture& picture : sprite.pictures)
        if (!trim)
            kept.include(0, 0, picture.width, picture.height);
        else if (picture.seen.width() > 0)
            kept.include(picture.x, picture.y, picture.x + picture.seen.width(),
                         picture.y + picture.seen.height());
    if (kept.isEmpty())
        kept.include(0, 0, 1, 1);
    return kept;
}

Cut cutOf(const LooseSprite& sprite, const Span& kept) {
    Cut cut = {kept.left, kept.top, 0, 0};
    for (const LoosePicture& picture : sprite.pictures) {
        cut.right = std::max(cut.right, picture.width - kept.right);
        cut.bottom = std::max(cut.bottom, picture.height - kept.bottom);
    }
    return cut;
}

/// A frame as it lies on the sheet: its own canvas, as far as that is kept.
KXImage cell(const LoosePicture& picture, const Span& kept) {
    KXImage cell(std::max(1, std::min(kept.right, picture.width) - kept.left),
                 std::max(1, std::min(kept.bottom, picture.height) - kept.top));
    cell.paste(picture.seen, picture.x - kept.left, picture.y - kept.top);
    return cell;
}

/// The sprite as a file says it, once its pictures have places.
Document documentOf(const LooseSprite& sprite, const Span& kept, const std::vector<Area>& places) {
    Document document;
    for (const auto& [name, animation] : sprite.animations) {
        Animation& made = document.animations[name];
        made.loops = animation.loops;
        for (const LooseSprite::Frame& frame : animation.frames)
            made.frames.push_back({frame.duration, places[frame.picture]});
    }
    for (const auto& [name, box] : sprite.boxes)
        document.boxes[name] = {box.x - static_cast<float>(kept.left), box.y - static_cast<float>(kept.top),
                                box.width, box.height};
    return document;
}
} // namespace

LoosePicture loosePicture(const KXImage& canvas) {
    const Span span = seenOf(canvas);
    LoosePicture picture = {KXImage(), 0, 0, canvas.width(), canvas.height()};
    if (span.isEmpty())
        return picture;
    picture.seen = canvas.part(
        {{static_cast<float>(span.left), static_cast<float>(span.top)},
         {static_cast<float>(span.right - span.left), static_cast<float>(span.bottom - span.top)}});
    picture.x = span.left;
    picture.y = span.top;
    return picture;
}

std::size_t LooseSprite::add(LoosePicture picture) {
    pixels += std::int64_t{picture.seen.width()} * picture.seen.height();
    if (pixels > std::int64_t{largestSheetSide} * largestSheetSide)
        throw Fault("has more pictures than a sheet can hold");
    pictures.push_back(std::move(picture));
    return pictures.size() - 1;
}

void LooseSprite::add(LooseSprite other) {
    const std::size_t first = pictures.size();
    for (LoosePicture& picture : other.pictures)
        add(std::move(picture));
    for (auto& [name, animation] : other.animations) {
        for (Frame& frame : animation.frames)
            frame.picture += first;
        if (!animations.emplace(name, std::move(animation)).second)
            throw Fault("there is already an animation " + quoted(name));
    }
    for (const auto& [name, box] : other.boxes)
        if (!boxes.emplace(name, box).second)
            throw Fault("there is already a box " + quoted(name));
}

SpriteSheet makeSheet(const std::vector<LooseSprite>& sprites, const std::string& texture,
                      const SheetSettings& settings) {
    Packer packer(settings.packing);
    std::vector<Span> kept;
    std::vector<std::vector<std::size_t>> numbers;
    for (const LooseSprite& sprite : sprites) {
        kept.push_back(keptOf(sprite, settings.trim));
        numbers.emplace_back();
        for (const LoosePicture& picture : sprite.pictures)
            numbers.back().push_back(packer.add(cell(picture, kept.back())));
    }
    PackedSheet packed = packer.pack();
    SpriteSheet sheet = {std::move(packed.image), packed.percentFull, packed.places.size(), {}, {}};
    for (std::size_t i = 0; i < sprites.size(); ++i) {
        std::vector<Area> places;
        for (const std::size_t number : numbers[i])
            places.push_back(packed.places[number]);
        sheet.documents.push_back(documentOf(sprites[i], kept[i], places));
        sheet.documents.back().texture = texture;
        sheet.cuts.push_back(cutOf(sprites[i], kept[i]));
    }
    return sheet;
}
