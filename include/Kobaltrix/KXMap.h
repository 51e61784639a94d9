#pragma once

#include <Kobaltrix/KXCollision.h>
#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

#include <memory>
#include <string>
#include <vector>

/// @file
/// Maps of tiles, as the editor Tiled saves them in JSON (.tmj): drawn by what is visible, asked for tiles
/// and objects, and walked on. Orthogonal ones, finite and infinite.
///
///     KXMap map("level.tmj");
///     const int walls = map.layerNamed("walls");
///     const KXSlide slide = map.slide(body, speed, walls); // in each step
///     map.draw({camera, window.size()}, {0, 0});           // in each frame
///
/// Units are pixels of the map: the cell in column c and row r begins at (c, r) times tileSize(). A map needs
/// no window before it is drawn: a server loads the same file. Truth values are ints: -1 for yes, 0 for no.

struct _KXMapState;

/// Sets how many cells the layers of a map may have together, 134217728 at the start. A file that claims more
/// is refused. Counts for maps loaded from now on.
KX_API void KXSetMaximumMapCells(uint32_t cells);

/// How a tile is turned: any of these together. Diagonally first, then to the side, then upside down; so
/// diagonal and horizontal together are a quarter turn clockwise.
enum KXTileFlip : int {
    KXTileFlipNone = 0,
    KXTileFlipHorizontal = 1, ///< Left and right.
    KXTileFlipVertical = 2,   ///< Top and bottom.
    KXTileFlipDiagonal = 4    ///< Rows and columns.
};

/// A tile of a set.
struct KXTile {
    int tileset = -1; ///< The number of its set, from 0; -1 for none: an empty cell.
    int id = 0;       ///< Its number in the set, from 0.
    int flips = 0;    ///< Of KXTileFlip.
};

/// What kind of value a property has.
enum KXMapPropertyType : int {
    KXMapPropertyText = 0, ///< A text, the path of a file, or a choice.
    KXMapPropertyNumber,   ///< A number, whole or not.
    KXMapPropertyFlag,     ///< True (number 1) or false (number 0).
    KXMapPropertyColor,    ///< A colour.
    KXMapPropertyObject    ///< The id of an object.
};

/// A value that somebody has given a name in the editor. Members of a class are properties named
/// "property.member", those of a list "property.0" and so on.
struct KXMapProperty {
    std::string name;       ///< Its name.
    KXMapPropertyType type; ///< Which of the following counts.
    std::string text;       ///< A text as it stands, also that of a colour; else empty.
    double number;          ///< A number; else 0.
    KXColor color;          ///< A colour; else transparent black.
};

/// The properties of something.
using KXMapProperties = std::vector<KXMapProperty>;
/// The property of a name; null if there is none. It belongs to the map.
KX_API const KXMapProperty* KXFindMapProperty(const KXMapProperties& properties, const char* name);

/// What a layer holds.
enum KXMapLayerKind : int {
    KXMapLayerTiles = 0, ///< Tiles.
    KXMapLayerObjects,   ///< Objects.
    KXMapLayerImage      ///< One picture.
};

/// A layer. What the groups say that it lies in is worked in; groups are no layers themselves.
struct KXMapLayer {
    std::string name;           ///< Its own name.
    KXMapLayerKind kind;        ///< What it holds.
    int visible;                ///< -1, or 0 if it, or a group it lies in, is hidden.
    float opacity;              ///< 0 to 1.
    KXPoint offset;             ///< By how much it is moved, in pixels.
    KXPoint parallax;           ///< How fast it scrolls: 1 with the map, 0 not at all.
    KXColor tint;               ///< What its pictures are multiplied by.
    KXMapProperties properties; ///< Its own.
};

/// What an object is.
enum KXMapShape : int {
    KXMapShapeRect = 0, ///< A rectangle, maybe without an area.
    KXMapShapePoint,    ///< A point.
    KXMapShapeEllipse,  ///< What fills the rectangle, round.
    KXMapShapePolygon,  ///< A closed line of points.
    KXMapShapePolyline, ///< An open line of points.
    KXMapShapeTile,     ///< A tile as large as the rectangle.
    KXMapShapeText,     ///< A text in a rectangle.
    KXMapShapeCapsule   ///< The rectangle with its short sides round.
};

/// An object that was put on the map.
struct KXMapObject {
    int id;                      ///< Its number, its own in the whole map.
    int layer;                   ///< The number of its layer.
    std::string name;            ///< Its name, maybe empty, maybe that of others, too.
    std::string type;            ///< Its class; that of its tile if it has none.
    KXMapShape shape;            ///< What it is.
    KXRect rect;                 ///< Where it lies before it is turned, the offset of its layer included.
    float rotation;              ///< Degrees, clockwise about #pivot.
    KXPoint pivot;               ///< Of a tile mostly its bottom left, of others their top left.
    int visible;                 ///< -1 or 0.
    std::vector<KXPoint> points; ///< Of a polygon or polyline, on the map before it is turned.
    KXTile tile;                 ///< The tile it is; else none.
    std::string text;            ///< The text it is; else empty.
    KXMapProperties properties;  ///< Its own, and those of its tile that it does not set itself.
};

/// A map. Made, used and deleted on one thread, that which owns the OpenGL context where it is drawn. It can
/// be moved, not copied.
///
/// Layers are numbered from the back to the front, from 0. A number that is none has no tiles and draws
/// nothing. Memory: 4 bytes for each cell of every block of 32 by 32 that has a tile; empty blocks take none.
/// While a file is read, cells in lists of numbers take 16 bytes each, and packed ones (base64) 2 at most.
class KX_API KXMap {
public:
    /// An empty map of no size, for load().
    KXMap();
    /// Loads a file as load() does. Throws std::bad_alloc if it cannot; KXError() says why.
    explicit KXMap(const char* path);
    ~KXMap();
    /// Takes over a map; the other one is empty then.
    KXMap(KXMap&& other) noexcept;
    /// Takes over a map; the other one is empty then.
    KXMap& operator=(KXMap&& other) noexcept;

    /// Loads a map, and the sets of tiles in files beside it (.tsj). What is not as it should be is refused:
    /// the text names the file and the place in it. Pictures are loaded by loadPictures().
    /// @return -1 on success; 0 on failure, with a text in KXError(): the map is what it was.
    int load(const char* path);
    /// Loads the pictures of tiles and image layers, for the current window. draw() does it by itself where
    /// it was not done; what cannot be loaded is not drawn.
    /// @return -1 on success; 0, with a text in KXError(), where one cannot be loaded.
    int loadPictures();

    /// Columns and rows, as the file says. Those of an infinite map mean little.
    KXSize size() const;
    /// The size of a cell in pixels.
    KXSize tileSize() const;
    /// The colour behind everything; transparent if it has none.
    KXColor background() const;
    /// The map's own properties.
    const KXMapProperties& properties() const;

    /// The layers, from the back to the front.
    const std::vector<KXMapLayer>& layers() const;
    /// The number of the first layer of a name; -1 if there is none.
    int layerNamed(const char* name) const;
    /// Shows or hides a layer. @param layer its number. @param visible non-zero shows it.
    void setLayerVisible(int layer, int visible);

    /// The tile of a cell; none where there is none.
    KXTile tileAt(int layer, int column, int row) const;
    /// The tile that holds a point of the map.
    KXTile tileAt(int layer, KXPoint point) const;
    /// Sets the tile of a cell, also beyond the size. @return -1; 0 where the layer has no tiles, the tile is
    /// not in the map's sets, or the cell lies more than 16777216 from the origin.
    int setTile(int layer, int column, int row, KXTile tile);
    /// What was said of a tile in its set; empty if nothing.
    const KXMapProperties& tileProperties(KXTile tile) const;
    /// The class that a tile has in its set; empty if none. Belongs to the map.
    const char* tileType(KXTile tile) const;

    /// All objects, layer by layer, in the order in which they are drawn.
    const std::vector<KXMapObject>& objects() const;
    /// The first object of a name; null if there is none. It belongs to the map.
    const KXMapObject* objectNamed(const char* name) const;

    /// Moves a rectangle among the tiles of a layer, which are solid as large as their cells, as
    /// KXSlideRect() does: up to what is in its way, and along it.
    /// @param moving,by as in KXSweepRect(). @param layer its number. @param property if not null, solid are
    /// only the tiles that have a flag of that name, and it is true.
    KXSlide slide(KXRect moving, KXPoint by, int layer, const char* property = nullptr) const;

    /// Lets the animated tiles go on. @param milliseconds since the last time; negative ones and what is not
    /// a number do nothing.
    void advance(float milliseconds);
    /// Draws what lies in a part of the map: all visible layers with their tiles, pictures, and objects that
    /// are tiles. What reaches out of the part is drawn whole: clip where that shows. The cost is that of
    /// what is drawn, whatever the size of the map. A layer is a draw call for each set, and its tiles are
    /// drawn in a draw batch.
    /// @param part of the map, in its pixels; at most 16384 cells a side.
    /// @param position where the part's top left comes to lie. Whole numbers keep tiles without seams.
    void draw(KXRect part, KXPoint position);
    /// The same for one layer, also a hidden one: sprites go between two layers.
    void drawLayer(int layer, KXRect part, KXPoint position);

private:
    std::unique_ptr<_KXMapState> _state;
};
