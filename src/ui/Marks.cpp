#include "ui/Marks.h"

#include "ui/WholePixels.h"

#include <Kobaltrix/KXDrawing.h>

#include <algorithm>
#include <cstdlib>

void _KXDrawDisc(KXRect box, int radius, KXColor color) {
    constexpr int corners = 24;
    KXDrawCircleFill({box.origin.x + box.size.width / 2, box.origin.y + box.size.height / 2}, radius, corners,
                     color);
}

void _KXDrawHook(KXRect box, KXColor color) {
    const int side = _KXWholePixel(box.size.width), thickness = std::max(2, side / 5),
              width = side - 2 * std::max(2, side / 5), turn = width / 3;
    const int top = (side - thickness - (width - 1 - turn)) / 2, lowest = top + width - 1 - turn;
    for (int i = 0; i < width; ++i) {
        const KXPoint at = {box.origin.x + static_cast<float>((side - width) / 2 + i),
                            box.origin.y + static_cast<float>(lowest - std::abs(i - turn))};
        KXDrawRectFill({at, {1, static_cast<float>(thickness)}}, color);
    }
}
