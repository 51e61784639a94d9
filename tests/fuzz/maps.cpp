// Files that may be maps.

#include "Fuzz.h"

#include <Kobaltrix/KXMap.h>

void fuzz(FuzzBytes bytes) {
    fuzzWindow();
    KXSetMaximumMapCells(1 << 16);
    KXMap map;
    if (!map.load(fuzzFile(bytes.rest(), ".tmj")))
        return;
    map.loadPictures();
    map.draw({{-50, -50}, {400, 300}}, {0, 0});
    map.advance(70);
    map.draw({{1000000, -70000}, {400, 300}}, {0.5f, 0});
    for (int layer = 0; layer < static_cast<int>(map.layers().size()); ++layer) {
        map.tileProperties(map.tileAt(layer, 1, 1));
        const KXSlide slide = map.slide({{3, 3}, {5, 5}}, {40, -30}, layer);
        require(slide.position.x <= 43 && slide.position.y >= -27, "nobody gets farther than the way");
        map.setTile(layer, -3, 7, map.tileAt(layer, 0, 0));
    }
    endFuzzStep();
}
