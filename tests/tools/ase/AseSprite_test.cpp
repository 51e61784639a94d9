#include "AseFile.h"
#include "ase/AseSprite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

// .aseprite files, composed and compared pixel by pixel.

namespace {
using namespace ase;

constexpr int image = 0, group = 1, tilemap = 2, unknown = 9;
constexpr int visible = 1, background = 8, reference = 64;

std::string bytesOf(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes.push_back(static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

// Colours with a letter, as pixels of a file.
const std::map<char, std::string> letters = {{'.', "00000000"}, {'r', "ff0000ff"}, {'g', "00ff00ff"},
                                             {'b', "0000ffff"}, {'w', "ffffffff"}, {'k', "000000ff"}};
std::string dots(const std::string& names) {
    std::string hex;
    for (const char name : names)
        hex += letters.at(name);
    return bytesOf(hex);
}

/// A frame's rows: letters, and in hexadecimal numbers what has none.
std::string shown(const AseSprite& sprite, std::size_t frame) {
    const KXImage picture = composeFrame(sprite, frame);
    std::string rows;
    for (int y = 0; y < picture.height(); ++y, rows += y < picture.height() ? "/" : "")
        for (int x = 0; x < picture.width(); ++x) {
            const KXPixel pixel = picture.row(y)[x];
            char hex[9];
            std::snprintf(hex, sizeof hex, "%02x%02x%02x%02x", pixel.r, pixel.g, pixel.b, pixel.a);
            const auto letter = std::ranges::find(letters, hex, &std::pair<const char, std::string>::second);
            rows += letter == letters.end() ? "<" + std::string(hex) + ">" : std::string(1, letter->first);
        }
    return rows;
}
std::string shown(const File& file) {
    const AseSprite sprite = readAseprite(file.bytes());
    std::string frames;
    for (std::size_t i = 0; i < sprite.frames.size(); ++i)
        frames += (i ? " " : "") + shown(sprite, i);
    return frames;
}

/// A sprite of one frame in which each layer has one cel of one pixel, from the back to the front.
struct Dot {
    LayerFields layer;
    std::string color;
    CelFields cel = {};
};
File stack(const std::vector<Dot>& dotsFromTheBack, int flags = 1) {
    FrameFields frame;
    for (const Dot& dot : dotsFromTheBack)
        frame.chunks.push_back(layer(dot.layer));
    int number = 0;
    for (const Dot& dot : dotsFromTheBack) {
        CelFields cel = dot.cel;
        cel.layer = number++;
        if (!dot.color.empty())
            frame.chunks.push_back(packedCel(cel, 1, 1, bytesOf(dot.color)));
    }
    return {1, 1, 32, {frame}, flags};
}

const std::string red = letters.at('r'), green = letters.at('g'), blue = letters.at('b');

// Worked out apart from the code: six pixels over six others, in each mode.
const std::string backdrops = "c8641eff0cfa80ff5a5ac8a0ff40004d000000001e28323c",
                  sources = "3cb45affff007fffdc2882c840c840280a141e8046505a00";
struct Blend {
    const char *opaque, *opacity118; ///< The first four; what follows is the same in each mode.
};
const Blend blends[] = {
    {"3cb45affff007fffc8308debb7731869", "888939ff7c8780ff9843a7c3d75c0d5a"},
    {"2f470bff0c0040ff671e7aebb7601069", "825716ff0c8763ff683a9ec3d753095a"},
    {"d5d16dfffffabfffd064cfebcf751869", "ce9642ff7cfa9dff9b5cc8c3e45d0d5a"},
    {"ab8d15ff18f580ff9b28bdebcf671069", "bb761aff11f880ff823fbfc3e456095a"},
    {"3c641eff0c007fff6f308debb7621069", "88641eff0c8780ff6c43a7c3d754095a"},
    {"c8b45afffffa80ffc852bdebcf731869", "c88939ff7cfa80ff9853bfc3e45c0d5a"},
    {"ffff2efffffaffffe05de2ebcf7a1069", "e1ab25ff7cfabaffa359d1c3e460095a"},
    {"152300ff0c0000ff5d1598ebcf5c1069", "764611ff0c8745ff6435adc3e44f095a"},
    {"5ea415ffff007fffc228bdebbf701069", "97811aff7c8780ff953fbfc3db5a095a"},
    {"b17d16ff2af580ff8e36bdebcf671069", "be6f1bff19f880ff7b46bfc3e456095a"},
    {"8c503cfff3fa01ff8a3664ebc76b1869", "ad5b2bff76fa46ff794693c3df580d5a"},
    {"a68a62fff3fa7fff9b5a8bebc76f1869", "b9753dff76fa80ff8157a6c3df5a0d5a"},
    {"11bb3bffff73b9ffa84085ebae721069", "748c2bff7cbc9aff884ba3c3d35c095a"},
    {"b16a39ff02ff7dff6b4ee2ebc7651769", "be662aff08fc7fff6a52d1c3df550c5a"},
    {"30a84effff73b9ffc72f8cebb3701469", "828334ff7cbc9aff9742a6c3d55a0b5a"},
    {"d36f29ff008c44ff6f52bdebcf671769", "cd6923ff07c865ff6c53bfc3e4560c5a"},
    {"ffff78fffffaffffe06ee2ebcf7a1869", "e1ab47ff7cfabaffa361d1c3e4600d5a"},
    {"8c0000ff00fa01ff313664ebc75a1069", "ad3611ff07fa46ff4e4693c3df4f095a"},
    {"ff8e55ff0cffffff78c3e2ebcf641069", "e17737ff0cfcbaff708bd1c3e454095a"},
    {"3cb45affff007fffc8308debb7731869", "888939ff7c8780ff9843a7c3d75c0d5a"}}; // there is no 19: normal

TEST(AseSprite, BlendsInEveryMode) {
    for (int mode = 0; mode < static_cast<int>(std::size(blends)); ++mode)
        for (const bool opaque : {true, false}) {
            const File file = {
                6,
                1,
                32,
                {{{layer(), layer({.mode = mode, .opacity = opaque ? 255 : 200}),
                   packedCel({}, 6, 1, bytesOf(backdrops)),
                   packedCel({.layer = 1, .opacity = opaque ? 255 : 150}, 6, 1, bytesOf(sources))}}}};
            const auto [all, faint] = blends[mode];
            const std::string expected =
                opaque ? std::string(all) + "0a141e801e28323c" : std::string(faint) + "0a141e3b1e28323c";
            const KXImage picture = composeFrame(readAseprite(file.bytes()), 0);
            EXPECT_EQ(std::string(reinterpret_cast<const char*>(picture.row(0)), 24), bytesOf(expected))
                << "mode " << mode << ", " << (opaque ? "opaque" : "faint") << ": " << shown(file);
        }
}

TEST(AseSprite, ComposesLayers) {
    const Dot r = {{}, red}, g = {{}, green}, b = {{}, blue};
    const auto with = [](Dot dot, const std::function<void(Dot&)>& change) {
        change(dot);
        return dot;
    };
    const auto flagged = [&](Dot dot, int flags) {
        return with(dot, [=](Dot& d) { d.layer.flags = flags; });
    };
    const auto moved = [&](Dot dot, int z) { return with(dot, [=](Dot& d) { d.cel.z = z; }); };
    const auto inside = [&](Dot dot, int level) { return with(dot, [=](Dot& d) { d.layer.level = level; }); };
    const auto faint = [&](Dot dot) { return with(dot, [](Dot& d) { d.layer.opacity = 128; }); };
    const Dot folder = {{.type = group}, ""}, hidden = flagged(folder, 0);
    const Dot blended = {{.type = group, .mode = 16, .opacity = 128}, ""};
    const struct {
        const char *what, *picture;
        File file;
    } cases[] = {
        {"the last is in front", "b", stack({r, g, b})},
        {"hidden layers", "g", stack({r, g, flagged(b, 0)})},
        {"reference layers", "g", stack({r, g, flagged(b, visible | reference)})},
        {"a hidden group hides all in it", "r",
         stack({r, hidden, inside(folder, 1), inside(g, 2), inside(b, 1)})},
        {"what follows a group is outside again", "b", stack({r, hidden, inside(g, 1), b})},
        {"opacity of a layer", "<7f8000ff>", stack({r, faint(g)})},
        {"which an old file does not say", "g", stack({r, faint(g)}, 0)},
        {"opacity of layer and cel", "<bf4000ff>",
         stack({r, with(faint(g), [](Dot& d) { d.cel.opacity = 127; })})},
        {"a group's mode and opacity mean nothing", "g", stack({r, blended, inside(g, 1)})},
        {"unless it is composed apart", "<ff8000ff>", stack({r, blended, inside(g, 1)}, 3)},
        {"a group apart has no backdrop", "<7f8000ff>",
         stack({r, {{.type = group, .opacity = 128}, ""}, inside({{.mode = 16}, green}, 1)}, 3)},
        {"a hidden group apart", "r", stack({r, hidden, inside(g, 1)}, 3)},
        {"a group in a group, and an empty one", "b",
         stack({r, folder, inside(folder, 1), inside(g, 2), inside(b, 1), folder}, 3)},
        {"a cel moved to the front", "r", stack({moved(r, 2), g, b})},
        {"a cel moved before its neighbour", "r", stack({moved(r, 1), g})},
        {"three in one place: the lesser move is behind", "r", stack({moved(r, 1), g, moved(b, -1)})},
        {"hidden layers count on the way", "b", stack({moved(r, 1), flagged(g, 0), b})},
        {"a cel moved out of a group", "r", stack({folder, inside(moved(r, 2), 1), g})},
        {"which one apart does not let out", "g", stack({folder, inside(moved(r, 2), 1), g}, 3)},
        {"layers of a group apart count by themselves", "r",
         stack({b, folder, inside(moved(r, 2), 1), inside(g, 1)}, 3)},
        {"the background is behind all, and solid", "<7f8000ff>",
         stack({faint(g), with(faint(flagged(r, visible | background)),
                               [](Dot& d) {
                                   d.layer.mode = 16;
                                   d.cel.z = 9;
                               })})},
        {"layers of unknown kinds keep their number", "g",
         stack({r, {{.type = unknown}, blue}, g, {{.type = group}, blue}})},
        {"tile maps that nobody sees", "r", stack({r, {{.flags = 0, .type = tilemap}, blue}})},
    };
    for (const auto& [what, picture, file] : cases)
        EXPECT_EQ(shown(file), picture) << what;
}

TEST(AseSprite, ReadsCelsOfEveryForm) {
    const std::string four = dots("rgbw");
    const auto one = [](const std::vector<std::string>& chunks) {
        FrameFields frame = {{layer()}};
        frame.chunks.insert(frame.chunks.end(), chunks.begin(), chunks.end());
        return File{3, 2, 32, {frame}};
    };
    File links = one({packedCel({.x = 1}, 2, 1, dots("rg"))});
    links.frames.push_back({{linkedCel({.x = 0, .y = 1}, 0)}});
    links.frames.push_back({{linkedCel({.x = 1, .opacity = 0x33}, 1)}});
    links.frames.push_back({{}});
    links.frames.push_back({{linkedCel({}, 3)}});
    const struct {
        const char *what, *picture;
        File file;
    } cases[] = {
        {"raw", ".rg/.bw", one({rawCel({.x = 1}, 2, 2, four)})},
        {"packed", ".rg/.bw", one({packedCel({.x = 1}, 2, 2, four)})},
        {"beyond the left and the top", "w../...", one({packedCel({.x = -1, .y = -1}, 2, 2, four)})},
        {"beyond the right and the bottom", ".../..r", one({packedCel({.x = 2, .y = 1}, 2, 2, four)})},
        {"wholly outside", ".../...", one({packedCel({.x = 3, .y = -2}, 2, 2, four)})},
        {"linked, at places of their own, and to nothing",
         ".rg/... .../rg. .<ff000033><00ff0033>/... .../... .../...", links},
        {"empty ones", ".../...", one({rawCel({}, 0, 2, ""), packedCel({}, 2, 0, "")})},
        {"of unknown kinds and layers", ".../...", one({cel({}, 7, "x"), rawCel({.layer = 1}, 1, 1, red)})},
        {"more pixels than needed", "r../...",
         one({cel({}, 2, u16(1) + u16(1) + packed(dots("rgbw") + std::string(999, 'x')))})},
        {"chunks that nobody knows, and bytes at the end", "r../...",
         one({chunk(0x2020, u32(1) + text("note")), chunk(0x2007, nothing(20)), chunk(0x7777, ""),
              rawCel({}, 1, 1, dots("r") + nothing(9))})},
    };
    for (const auto& [what, picture, file] : cases)
        EXPECT_EQ(shown(file), picture) << what;
}

TEST(AseSprite, ReadsPalettesAndGray) {
    const std::string indices = rawCel({}, 4, 1, std::string("\0\1\2\3", 4));
    const std::string colors = palette(4, 0, {0x000000FF, 0xFF0000FF, 0x00FF0080, 0x0000FFFF});
    const auto old = [](int type, const std::string& data) { return chunk(type, data); };
    const std::string two =
        u16(1) + u8(1) + u8(2) + "\xFF" + nothing(0) + u8(0) + u8(0) + u8(0) + u8(0) + "\xFF";
    const auto indexed = [&](std::vector<std::string> chunks, int transparent = 0, int flags = visible) {
        chunks.push_back(layer({.flags = flags}));
        chunks.push_back(indices);
        return File{4, 1, 8, {{chunks}}, 1, transparent};
    };
    File changing = indexed({colors});
    changing.frames.push_back({{linkedCel({}, 0), palette(4, 3, {0xFFFFFFFF})}});
    changing.frames.push_back({{linkedCel({}, 0)}});
    changing.frames.push_back({{palette(3, 1, {0x0000FFFF}), linkedCel({}, 0)}});
    const struct {
        const char *what, *picture;
        File file;
    } cases[] = {
        {"the transparent index", ".r<00ff0080>b", indexed({colors})},
        {"another one", "k.<00ff0080>b", indexed({colors}, 1)},
        {"a background shows it", "kr<008000ff>b", indexed({colors}, 0, visible | background)},
        {"a hidden one does not", "....", indexed({colors}, 0, background)},
        {"palettes hold until they change", ".r<00ff0080>b .r<00ff0080>w .r<00ff0080>w .b<00ff0080>.",
         changing},
        {"old ones", ".rbk", indexed({old(0x0004, two)})},
        {"older ones of 6 bits, by either number", ".<ff8200ff><000004ff>k",
         indexed({old(0x0011, u16(1) + u8(0) + u8(2) + "???" + "\x3F\x20" + u8(0)),
                  old(0x000B, u16(1) + u8(2) + u8(1) + u8(0) + u8(0) + "\1")})},
        {"all 256 colours are 0 of them", ".ggg",
         indexed({old(
             0x0004, u16(1) + u8(0) + u8(0) +
                         [] {
                             std::string all;
                             for (int i = 0; i < 256; ++i)
                                 all += u8(0) + u8(255) + u8(0);
                             return all;
                         }())})},
        {"skips of several add up", ".krk",
         indexed({old(0x0004, u16(2) + u8(1) + u8(1) + "xyz" + u8(1) + u8(1) + u8(255) + u8(0) + u8(0)),
                  old(0x0004, u16(1) + u8(1) + u8(1) + u8(0) + u8(0) + u8(0))})},
        {"old ones mean nothing behind one of today", ".r<00ff0080>b", indexed({colors, old(0x0004, two)})},
        {"gray", "<50505080>w..", {4, 1, 16, {{{layer(), rawCel({}, 2, 1, bytesOf("5080ffff"))}}}}},
        {"the hue of gray is normal",
         "<404040ff>",
         {1,
          1,
          16,
          {{{layer(), layer({.mode = 12}), rawCel({}, 1, 1, bytesOf("a0ff")),
             rawCel({.layer = 1}, 1, 1, bytesOf("40ff"))}}}}},
    };
    for (const auto& [what, picture, file] : cases)
        EXPECT_EQ(shown(file), picture) << what;
}

/// A file with something of everything in it.
File everything() {
    return {4,
            2,
            8,
            {{{palette(4, 0, {1, 2, 3, 4}), tags({tag("walk", 0, 1, 2, 3), tag("all", 0, 1)}),
               layer({.type = group}), layer({.level = 1}), layer({.flags = visible | background}),
               slice("hit", {key(0, 1, 1, 2, 2), key(1, 1, 1, 3, 2)}, 3),
               packedCel({.layer = 1}, 2, 2, std::string("\0\1\2\3", 4)), rawCel({.layer = 2}, 1, 1, "\1"),
               chunk(0x0004, u16(1) + u8(0) + u8(1) + "rgb")}},
             {{linkedCel({.layer = 1, .z = -1}, 0)}, 0}},
            3};
}

TEST(AseSprite, RefusesWithThePlace) {
    const auto with = [](const std::vector<std::string>& chunks, int bits = 32) {
        return File{2, 2, bits, {{{layer({.name = "ground"})}}, {chunks}}}.bytes();
    };
    const auto changed = [](std::size_t at, const std::string& bytes) {
        return File{2, 2, 32, {{{layer()}}}}.bytes().replace(at, bytes.size(), bytes);
    };
    const std::string file = everything().bytes(),
                      level = chunk(0x2004, u16(1) + u16(0) + u16(2) + nothing(12));
    const std::pair<std::string, const char*> cases[] = {
        {"", "byte 0: 128 bytes should be here, but there are 0"},
        {changed(4, "PN"), "byte 6: is no .aseprite file"},
        {changed(6, u16(0)), "has no frames"},
        {changed(6, u16(9)), "byte 128: 9 frames are claimed, which the "},
        {changed(8, u16(0)), "the canvas is 0 x 2 pixels"},
        {changed(8, u16(16385)), "the canvas is 16385 x 2 pixels"},
        {changed(8, u16(16384) + u16(16384)), "the canvas is 16384 x 16384 pixels"},
        {changed(12, u16(24)), "a pixel has 24 bits"},
        {changed(128, u32(15)), "frame 0, byte 128: the frame claims 15 bytes"},
        {changed(128, u32(999)), "frame 0, byte 128: the frame claims 999 bytes"},
        {changed(132, u16(7)), "frame 0, byte 128: this is no frame"},
        {changed(134, u16(0xFFFF)), "frame 0, byte 144: 65535 chunks are claimed, which"},
        {changed(144, u32(5)), "frame 0, chunk 0, byte 144: the chunk claims 5 bytes"},
        {changed(144, u32(99)), "frame 0, chunk 0, byte 144: the chunk claims 99 bytes"},
        {with({layer({.level = 2})}),
         "frame 1, chunk 0, byte 202: the layer is 2 levels deep, that before it 0"},
        {with({layer({.level = 1})}), "the layer lies in one that is no group"},
        {with({rawCel({}, 2, 2, "123")}),
         "a cel of 2 x 2 pixels is claimed, which the 3 bytes left cannot hold"},
        {with({cel({}, 2, u16(999) + u16(999) + "123")}), "a cel of 999 x 999 pixels is claimed"},
        {with({cel({}, 2, u16(2) + u16(2) + packed("1234567890"))}),
         "the pixels' stream ends 6 bytes too early"},
        {with({cel({}, 2, u16(1) + u16(1) + "12345678")}), "the pixels' stream is damaged"},
        {with({linkedCel({}, 1)}), "the cel is linked to frame 1, which does not come before it"},
        {with({rawCel({}, 1, 1, red), rawCel({}, 1, 1, red)}), "frame 1, byte 174: layer 0 has two cels"},
        {with({cel({}, 3, "")}), "layer 'ground' is a tile map, which cannot be read; convert it"},
        {with({layer({.type = tilemap}), rawCel({.layer = 1}, 1, 1, red)}), "layer 'a layer' is a tile map"},
        {with({palette(4, 3, {1, 2})}, 8), "a palette of 4 colours is given those from 3 to 4"},
        {with({palette(70000, 3, {1, 2})}, 8), "a palette of 70000 colours"},
        {with({chunk(0x2019, u32(99) + u32(0) + u32(98) + nothing(20))}, 8), "99 colours are claimed"},
        {with({chunk(0x0004, u16(1) + u8(1) + u8(0) + nothing(999))}, 8), "colours beyond the 256"},
        {with({tags({tag("t", 1, 0)})}), "tag 't' covers the frames 1 to 0, but there are 2"},
        {with({tags({tag("t", 0, 2)})}), "tag 't' covers the frames 0 to 2"},
        {with({chunk(0x2018, u16(3) + nothing(50))}), "3 tags are claimed, which the 42 bytes left cannot"},
        {with({chunk(0x2022, u32(3) + u32(0) + u32(0) + text("s") + nothing(59))}), "3 keys of a slice"},
        {with({chunk(0x2021, u32(9999) + nothing(59))}), "9999 slices are claimed"},
    };
    for (const auto& [bytes, said] : cases)
        try {
            readAseprite(bytes);
            ADD_FAILURE() << "is read: " << said;
        } catch (const Fault& fault) {
            EXPECT_NE(std::string(fault.what()).find(said), std::string::npos) << said << "\n"
                                                                               << fault.what();
        }
}

TEST(AseSprite, BearsWhatIsCutOffOrChangedAnywhere) {
    const std::string file = everything().bytes();
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_THROW(readAseprite(std::string_view(file).substr(0, size)), Fault) << size;
    int read = 0;
    for (std::size_t at = 0; at < file.size(); ++at)
        for (const char other : {'\0', '\1', '\x7F', '\xFF'}) {
            std::string bytes = file;
            bytes[at] = other;
            try {
                const AseSprite sprite = readAseprite(bytes);
                if (sprite.width * sprite.height < 100000)
                    for (std::size_t i = 0; i < sprite.frames.size(); ++i)
                        composeFrame(sprite, i);
                ++read;
            } catch (const Fault&) {
            }
        }
    EXPECT_GT(read, 1000);
}

TEST(AseSprite, ReadsTagsAndSlices) {
    const AseSprite sprite = readAseprite(everything().bytes());
    ASSERT_EQ(sprite.tags.size(), 2u);
    const Tag& walk = sprite.tags.front();
    EXPECT_EQ(walk.name, "walk");
    EXPECT_EQ(std::vector({walk.from, walk.to, static_cast<int>(walk.direction), walk.repeats}),
              std::vector({0, 1, 2, 3}));
    EXPECT_EQ(sprite.frames[0].milliseconds, 100);
    EXPECT_EQ(sprite.frames[1].milliseconds, 40) << "the file's speed, where a frame has none";
    ASSERT_EQ(sprite.slices.size(), 1u);
    const AseSlice::Key& last = sprite.slices[0].keys.at(1);
    EXPECT_EQ(std::vector({last.frame, last.width, last.height}), std::vector({1u, 3u, 2u}));
    EXPECT_TRUE(sprite.slices[0].hasCentre && sprite.slices[0].hasPivot && last.x == 1 && last.y == 1);
}

TEST(Tags, AreLaidOutAsTheyArePlayed) {
    using Way = TagDirection;
    const struct {
        Way way;
        int to, repeats;
        std::vector<int> frames;
    } cases[] = {
        {Way::Forward, 3, 0, {0, 1, 2, 3}},
        {Way::Forward, 1, 3, {0, 1, 0, 1, 0, 1}},
        {Way::Reverse, 2, 2, {2, 1, 0, 2, 1, 0}},
        {Way::PingPong, 3, 0, {0, 1, 2, 3, 2, 1}},
        {Way::PingPong, 3, 1, {0, 1, 2, 3}},
        {Way::PingPong, 3, 2, {0, 1, 2, 3, 2, 1, 0}},
        {Way::PingPong, 3, 3, {0, 1, 2, 3, 2, 1, 0, 1, 2, 3}},
        {Way::PingPong, 0, 2, {0, 0}},
        {Way::PingPongReverse, 2, 0, {2, 1, 0, 1}},
        {Way::PingPongReverse, 2, 2, {2, 1, 0, 1, 2}},
    };
    std::vector<std::string> notes;
    for (const auto& [way, to, repeats, frames] : cases) {
        const TagOrder order = layOut({"t", 0, to, way, repeats}, notes);
        EXPECT_EQ(order.frames, frames) << static_cast<int>(way) << ", repeats " << repeats;
        EXPECT_EQ(order.loops, repeats ? 0 : -1);
    }
    EXPECT_TRUE(notes.empty());
    const TagOrder endless = layOut({"t", 0, 1, Way::Forward, 3000}, notes);
    EXPECT_EQ(endless.frames.size(), 2u);
    EXPECT_EQ(endless.loops, -1);
    EXPECT_EQ(notes.at(0), "tag 't' is played 3000 times, which is too long to be written down; it loops");
}
} // namespace
