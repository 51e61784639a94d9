#include "map/TileData.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"

#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXMap.h>
#include <Kobaltrix/KXWindow.h>

#include <cmath>
#include <cstring>
#include <random>

#include <zlib.h>
#include <zstd.h>

namespace {
/// Cells as the editor packs them.
std::string bytesOf(const std::vector<std::uint32_t>& cells) {
    std::string bytes;
    for (const std::uint32_t cell : cells)
        for (const int shift : {0, 8, 16, 24})
            bytes += static_cast<char>(cell >> shift);
    return bytes;
}
std::string inBase64(const std::string& bytes) {
    const char* const letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto at = [&](std::size_t j) {
            return j < bytes.size() ? static_cast<unsigned char>(bytes[j]) : 0U;
        };
        const unsigned bits = at(i) << 16 | at(i + 1) << 8 | at(i + 2);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k > bytes.size() ? '=' : letters[bits >> (18 - 6 * k) & 63];
    }
    return text;
}
std::string deflated(const std::string& bytes, int window) {
    std::string packed(compressBound(static_cast<uLong>(bytes.size())) + 64, '\0');
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, window, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}
std::string packed(const std::string& compression, const std::string& bytes) {
    if (compression == "zstd") {
        std::string out(ZSTD_compressBound(static_cast<uLong>(bytes.size())), '\0');
        out.resize(ZSTD_compress(out.data(), out.size(), bytes.data(), bytes.size(), 3));
        return out;
    }
    return compression.empty() ? bytes : deflated(bytes, compression == "zlib" ? 15 : 31);
}

struct Maps : WindowTest {
    static constexpr const char* set =
        R"({"firstgid": 1, "tilewidth": 4, "tileheight": 4, "tilecount": 4, "columns": 2,
        "image": "sheet.png", "tiles": [{"id": 1, "type": "spike", "properties": [{"name": "solid", "type": "bool", "value": true}]},
        {"id": 2, "animation": [{"tileid": 3, "duration": 100}, {"tileid": 0, "duration": 50}]}]})";
    TemporaryFolder folder;
    KXImage sheet{8, 8};
    int files = 0;

    Maps() {
        std::mt19937 random(3);
        for (int i = 0; i < 64; ++i)
            sheet.row(0)[i] = {std::uint8_t(random()), std::uint8_t(random()), std::uint8_t(random()), 255};
        sheet.writeToPNG((folder / "sheet.png").c_str());
    }
    std::string write(const std::string& layers, const std::string& more = "") {
        return folder.write(
            std::to_string(++files) + ".tmj",
            R"({"type": "map", "version": "1.10", "orientation": "orthogonal", "width": 3, "height": 2, "tilewidth": 4,
            "tileheight": 4, )" +
                more +
                (more.find("tilesets") == more.npos ? "\"tilesets\": [" + std::string(set) + "], " : "") +
                "\"layers\": [" + layers + "]}");
    }
    static std::string tiles(const std::string& rest) {
        return R"({"type": "tilelayer", "name": "ground", "width": 3, "height": 2, )" + rest + "}";
    }
    /// Loads what must be there.
    KXMap load(const std::string& layers, const std::string& more = "") {
        KXMap map;
        EXPECT_EQ(map.load(write(layers, more).c_str()), -1) << KXError();
        return map;
    }
    static int idAt(const KXMap& map, int column, int row) {
        const KXTile tile = map.tileAt(0, column, row);
        return tile.tileset < 0 ? -1 : tile.id;
    }
};

TEST_F(Maps, CellsAreTheSameHoweverTheyArePacked) {
    const std::vector<std::uint32_t> cells = {1, 0, 0xE0000002, 3, 0x90000004, 9};
    std::vector<std::string> layers = {tiles(R"("data": [1, 0, 3758096386, 3, 2415919108, 9])")};
    for (const std::string compression : {"", "zlib", "gzip", "zstd"})
        layers.push_back(tiles(R"("encoding": "base64", "compression": ")" + compression +
                               R"(", "data": " )" + inBase64(packed(compression, bytesOf(cells))) +
                               "\\n \""));
    for (const std::string& layer : layers) {
        const KXMap map = load(layer);
        EXPECT_TRUE(idAt(map, 0, 0) == 0 && idAt(map, 1, 0) == -1 && idAt(map, 0, 1) == 2 &&
                    idAt(map, 1, 1) == 3)
            << layer;
        EXPECT_EQ(idAt(map, 2, 1), -1) << "it is in no set";
        EXPECT_EQ(map.tileAt(0, {8.5f, 3.9f}).id, 1);
        EXPECT_EQ(map.tileAt(0, {-0.5f, 0}).tileset, -1) << "left of the map";
        EXPECT_EQ(map.tileAt(0, 2, 0).flips, 7);
        EXPECT_EQ(map.tileAt(0, 1, 1).flips, KXTileFlipHorizontal) << "another bit is for other maps";
    }
    // Every cut and every surplus is found.
    for (const std::string compression : {"", "zlib", "gzip", "zstd"}) {
        const std::string whole = packed(compression, bytesOf(cells));
        for (std::size_t length = 0; length <= whole.size() + 1; ++length) {
            const std::string bytes = (whole + "x").substr(0, length);
            KXMap map;
            EXPECT_EQ(map.load(write(tiles(R"("encoding": "base64", "compression": ")" + compression +
                                           R"(", "data": ")" + inBase64(bytes) + "\""))
                                   .c_str()) != 0,
                      length == whole.size())
                << compression << length;
        }
    }
    std::string ignored;
    for (const char* text : {"A", "AA", "AAA", "=AAA", "AA=A", "A===", "A*AA"})
        EXPECT_FALSE(_KXDecodeBase64(text, ignored)) << text;
}

TEST_F(Maps, InfiniteMapsReachInAllDirections) {
    KXMap map = load(
        R"({"type": "group", "name": "g", "offsetx": 4, "opacity": 0.5, "visible": false, "layers": [{"type": "tilelayer", "name": "ground",
        "offsety": -8, "opacity": 0.5, "chunks": [{"x": -16, "y": -32, "width": 2, "height": 1, "data": [1, 2]},
        {"x": 40, "y": 8, "width": 1, "height": 2, "data": [3, 4]}]}]})",
        R"("infinite": true, )");
    EXPECT_TRUE(idAt(map, -16, -32) == 0 && idAt(map, -15, -32) == 1 && idAt(map, 40, 9) == 3 &&
                idAt(map, 0, 0) == -1);
    const KXMapLayer& layer = map.layers()[0];
    EXPECT_TRUE(layer.visible == 0 && layer.opacity == 0.25f && layer.offset == (KXPoint{4, -8}));
    EXPECT_EQ(map.tileAt(0, {-15 * 4 + 4, -32 * 4 - 8}).id, 1);
    EXPECT_EQ(map.slide({{150, 29}, {1, 1}}, {20, 0}, 0).position.x, 163);
    EXPECT_EQ(map.setTile(0, -5, 700, {0, 3, KXTileFlipDiagonal}), -1);
    EXPECT_TRUE(idAt(map, -5, 700) == 3 && map.tileAt(0, -5, 700).flips == KXTileFlipDiagonal);
    EXPECT_EQ(map.setTile(0, -5, 700, KXTile()), -1);
    EXPECT_EQ(idAt(map, -5, 700), -1);
    for (const auto& [column, id, tileset] : {std::tuple{1 << 25, 0, 0}, {0, 4, 0}, {0, -1, 0}, {0, 0, 1}})
        EXPECT_EQ(map.setTile(0, column, 0, {tileset, id, 0}), 0);
}

TEST_F(Maps, ObjectsAndPropertiesAreAsTheEditorHasThem) {
    folder.write(
        "sub.tsj",
        R"({"type": "tileset", "tilewidth": 4, "tileheight": 4, "tilecount": 1, "columns": 1, "image": "sheet.png", "objectalignment": "center"})");
    const KXMap map =
        load(R"({"type": "objectgroup", "name": "things", "offsetx": 100, "objects": [
        {"id": 4, "name": "last", "x": 1, "y": 50, "ellipse": true, "width": 3, "height": 2},
        {"id": 7, "name": "spike", "gid": 2147483650, "x": 10, "y": 20, "width": 8, "height": 6, "rotation": 90},
        {"id": 8, "gid": 20, "x": 10, "y": 30, "width": 8, "height": 6, "type": "own"},
        {"id": 9, "name": "way", "x": 1, "y": 40, "polyline": [{"x": 0, "y": 0}, {"x": 2, "y": -3}], "properties": [
            {"name": "n", "type": "int", "value": 5}, {"name": "c", "type": "color", "value": "#80ff0000"}, {"name": "s", "value": "hi"},
            {"name": "k", "type": "class", "value": {"deep": {"flag": true}}}, {"name": "l", "type": "list", "value": [{"type": "float", "value": 1.5}]}]},
        {"id": 10, "name": "sign", "x": 0, "y": 45, "text": {"text": "Hello"}, "visible": false}, {"id": 11, "x": 0, "y": 46, "point": true}]})",
             "\"tilesets\": [" + std::string(set) + R"(, {"firstgid": 20, "source": "sub.tsj"}], )");
    const auto& objects = map.objects();
    const int ids[] = {7, 8, 9, 10, 11, 4}; // from the top down
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(objects[i].id, ids[i]);
    const KXMapObject& spike = *map.objectNamed("spike");
    EXPECT_TRUE(spike.shape == KXMapShapeTile && spike.type == "spike" && spike.tile.id == 1 &&
                spike.tile.flips == KXTileFlipHorizontal);
    EXPECT_TRUE(KXFindMapProperty(spike.properties, "solid")->number == 1 &&
                spike.rect.origin == (KXPoint{110, 14}) && spike.pivot == (KXPoint{110, 20}));
    EXPECT_TRUE(objects[1].rect.origin == (KXPoint{106, 27}) && objects[1].type == "own" &&
                objects[1].tile.tileset == 1);
    const KXMapProperties& properties = objects[2].properties;
    EXPECT_TRUE(objects[2].shape == KXMapShapePolyline && objects[2].points[1] == (KXPoint{103, 37}));
    EXPECT_EQ(KXFindMapProperty(properties, "n")->number, 5);
    EXPECT_EQ(KXFindMapProperty(properties, "c")->color.a, 128 / 255.0f);
    EXPECT_EQ(KXFindMapProperty(properties, "s")->text, "hi");
    EXPECT_TRUE(KXFindMapProperty(properties, "k.deep.flag") &&
                KXFindMapProperty(properties, "l.0")->number == 1.5);
    EXPECT_TRUE(objects[3].text == "Hello" && !objects[3].visible && objects[4].shape == KXMapShapePoint &&
                objects[5].shape == KXMapShapeEllipse);
    EXPECT_TRUE(!map.objectNamed("no") && !map.objectNamed(nullptr) &&
                !KXFindMapProperty(properties, nullptr));
}

TEST_F(Maps, FaultsNameTheirPlace) {
    const std::string cells = R"("data": [1, 1, 1, 1, 1, 1])";
    const std::pair<std::string, std::string> rows[] = {
        {write("{}"), ": layers[0].type is missing"},
        {write(tiles("\"data\": [1, 2]")), ": layers[0] (ground).data: there are 2 cells, not 6"},
        {write(tiles("\"data\": [1, 2, 3, 4, 5, -1]")),
         ": layers[0] (ground).data: cell 5 is no number of a tile"},
        {write(tiles("\"encoding\": \"base64\", \"compression\": \"rar\", \"data\": \"\"")),
         ": layers[0] (ground).compression: is unknown"},
        {write(tiles("\"encoding\": \"base64\", \"data\": \"AAAA\"")),
         ": layers[0] (ground).data: ends, or is broken, in row 0 of 2"},
        {write(tiles(cells), R"("orientation": "isometric", )"),
         ": orientation: only orthogonal maps can be loaded"},
        {write(tiles(cells), R"("tilesets": [{"firstgid": 1, "source": "x.tsx"}], )"),
         "x.tsx: is XML; save it as JSON in the editor"},
        {write(tiles(cells), R"("tilesets": [{"firstgid": 0}], )"),
         ": tilesets[0].firstgid: must be from 1 to 268435455"},
        {write(R"({"type": "objectgroup", "name": "o", "objects": [{"id": 1, "name": "a", "x": "b"}]})"),
         ": layers[0] (o).objects[0] (a).x: must be a number"},
        {write(R"({"type": "objectgroup", "name": "o", "objects": [{"id": 1, "template": "a.tx"}]})"),
         ".template: objects of templates cannot be loaded; detach them in the editor"},
        {write(
             R"({"type": "objectgroup", "objects": [{"properties": [{"name": "c", "type": "color", "value": "red"}]}]})"),
         ".properties[0].value: must be a colour, #RRGGBB or #AARRGGBB"},
        {folder / "missing.tmj", "missing.tmj: cannot be opened"},
        {folder.write("cut.tmj", "{\"a\": ["), "cut.tmj: is no valid JSON: parse error"},
        {folder.write("deep.tmj", R"({"[[": "\"[{", "a": )" + std::string(200, '[')),
         "deep.tmj: is nested too deeply"},
        {folder.write("less.tmj", std::string(200, '[')), "less.tmj: is no valid JSON"},
    };
    KXMap map = load(tiles(cells));
    const auto fails = [&](const std::string& path, const std::string& text) {
        EXPECT_EQ(map.load(path.c_str()), 0);
        EXPECT_NE(std::string(KXError()).find(text), std::string::npos) << KXError() << "\n" << text;
        EXPECT_EQ(idAt(map, 2, 1), 0) << "it is what it was";
    };
    for (const auto& [path, text] : rows)
        fails(path, text);
    EXPECT_EQ(map.load(nullptr), 0);
    KXSetMaximumMapCells(5);
    fails(write(tiles(cells)), "layers[0] (ground): there are more cells than a map may have");
    KXSetMaximumMapCells(1 << 27);
    std::string deep = tiles(cells);
    for (int i = 0; i < 70; ++i)
        deep = R"({"type": "group", "layers": [)" + deep + "]}";
    fails(write(deep), "layers lie in too many groups");
    EXPECT_THROW(KXMap("missing.tmj"), std::bad_alloc);
}

TEST_F(Maps, ABoxMovesAmongTheTilesAsAmongTheirRectangles) {
    std::mt19937 random(5);
    KXMap map = load(tiles(R"("data": [0, 0, 0, 0, 0, 0], "offsetx": 3)"));
    std::vector<KXRect> boxes, solid;
    for (int row = -40; row < 40; ++row)
        for (int column = -40; column < 40; ++column)
            if (random() % 4 == 0) {
                const int id = static_cast<int>(random() % 2);
                map.setTile(0, column, row, {0, id, 0});
                boxes.push_back({{static_cast<float>(4 * column + 3), static_cast<float>(4 * row)}, {4, 4}});
                if (id == 1)
                    solid.push_back(boxes.back());
            }
    const auto fraction = [&random] {
        return static_cast<float>(static_cast<int>(random() % 4001) - 2000) / 250;
    };
    for (const bool isChosen : {false, true}) {
        const auto& among = isChosen ? solid : boxes;
        KXRect body = {{3.5f, 0.25f}, {2.5f, 3}};
        for (int step = 0; step < 2000; ++step) {
            const KXPoint by = {fraction(), fraction()};
            const KXSlide slide = map.slide(body, by, 0, isChosen ? "solid" : nullptr);
            const KXSlide expected = KXSlideRect(body, by, among.data(), static_cast<int>(among.size()));
            EXPECT_TRUE(slide.position == expected.position && slide.normal == expected.normal) << step;
            body.origin = std::fabs(slide.position.x) + std::fabs(slide.position.y) < 200 ? slide.position
                                                                                          : KXZeroPoint;
        }
    }
    EXPECT_EQ(map.slide({{0, 0}, {1, 1}}, {5, 5}, 9).position, (KXPoint{5, 5}));
}

TEST_F(Maps, TilesAreDrawnTurnedMovedAndInTime) {
    KXMap map = load(tiles(R"("data": [1, 1, 1, 1, 3, 2], "offsetx": 2)") + "," +
                     R"({"type": "imagelayer", "image": "sheet.png", "repeatx": true, "visible": false})");
    for (int i = 0; i < 4; ++i)
        map.setTile(0, i % 3, i / 3, {0, 0, i});
    for (int i = 4; i < 8; ++i)
        map.setTile(0, i, 2, {0, 1, i});
    KXImage expected(64, 48, {0, 0, 0, 1});
    const auto tile = [this](int id, int flips) {
        KXImage part = sheet.part({{id % 2 ? 4.0f : 0, id > 1 ? 4.0f : 0}, {4, 4}});
        part = flips & 4 ? part.flipped(KXFlipDiagonal) : part;
        part = flips & 1 ? part.flipped(KXFlipLeftRight) : part;
        return flips & 2 ? part.flipped(KXFlipTopBottom) : part;
    };
    for (int i = 0; i < 4; ++i)
        expected.draw(tile(0, i), 10 + 2 + 4 * (i % 3), 5 + 4 * (i / 3));
    for (int i = 4; i < 8; ++i)
        expected.draw(tile(1, i), 12 + 4 * i, 5 + 8);
    expected.draw(tile(1, 0), 12 + 8, 5 + 4);
    const auto differs = [&](const std::function<void()>& draw) {
        fill({0, 0, 0, 1});
        draw();
        const Image wanted = {64, 48,
                              std::vector<Pixel>(reinterpret_cast<Pixel*>(expected.row(0)),
                                                 reinterpret_cast<Pixel*>(expected.row(47)) + 64)};
        return differingPixels(Image::of(*window), wanted, 1);
    };
    const auto draw = [&] { map.draw({{-10, -5}, {64, 48}}, {0, 0}); };
    map.advance(NAN);
    map.advance(99);
    KXImage before = expected;
    expected.draw(tile(3, 0), 12 + 4, 5 + 4); // the second picture of the animation comes later
    EXPECT_EQ(differs(draw), 0);
    map.advance(1);
    expected.draw(tile(0, 0), 12 + 4, 5 + 4);
    EXPECT_EQ(differs(draw), 0);
    expected.fill({0, 0, 0, 1});
    for (int x = -8; x < 64; x += 8)
        expected.draw(sheet, x + 5, 7);
    EXPECT_EQ(differs([&] { map.drawLayer(1, {{3, 0}, {64, 48}}, {0, 7}); }), 0);
    EXPECT_TRUE(map.loadPictures());
    map.draw({{NAN, 0}, {INFINITY, 9}}, {0, 0});
    map.drawLayer(7, {{0, 0}, {9, 9}}, {0, 0});

    const KXMap taken = std::move(map);
    EXPECT_TRUE(map.layers().empty() && !taken.layers().empty() && map.tileAt(0, 0, 0).tileset == -1 &&
                !map.setTile(0, 0, 0, {}));
    map.draw({{0, 0}, {9, 9}}, {0, 0});
    KXMap lost = load(R"({"type": "imagelayer", "image": "lost.png"})");
    EXPECT_EQ(lost.loadPictures(), 0);
}

TEST_F(Maps, AHugeMapCostsWhatIsSeen) {
    KXMap map = load(tiles(R"("data": [0, 0, 0, 0, 0, 0])"));
    for (int i = 0; i < 10000; i += 7)
        map.setTile(0, i, i, {0, 1, 0});
    for (const float at : {0.0f, 20000.0f, 39900.0f}) {
        map.draw({{at, at}, {64, 48}}, {0, 0}); // loads the picture
        window->swapBuffers();
        map.draw({{at, at}, {64, 48}}, {0, 0});
        const KXDrawStatistics drawn = KXCurrentDrawStatistics();
        EXPECT_TRUE(drawn.drawCalls == 1 && drawn.quads > 0 && drawn.quads < 5 && drawn.textureUploads == 0)
            << at;
    }
}
} // namespace
