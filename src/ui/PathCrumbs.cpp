#include "ui/PathCrumbs.h"

#include "text/RowText.h"
#include "util/FolderListing.h"

#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXUIWidget.h>

#include <algorithm>
#include <cmath>

static constexpr const char* separator = " > ";

void _KXPathCrumbs::update(const KXFont& font, const std::string& path, KXRect place) {
    if (KXEqualRects(place, _place) && _fontRevision == font._currentRevision() && path == _path)
        return;
    _crumbs.clear();
    const float between = font.advance(separator);
    const std::string home = _KXHomeFolder();
    float left = 0;
    // From the last name, which is to be seen in any case, as far up as there is room.
    for (std::string part = path;; part = _KXParentOf(part)) {
        const std::string name = part == home ? "Home" : _KXLastPart(part);
        std::string text = name.empty() ? "/" : _KXShownName(name);
        float width = font.advance(text.c_str()) + (_crumbs.empty() ? 0 : between);
        if (_crumbs.empty() && width > place.size.width) {
            text = _KXTextEndThatFits(font, text.c_str(), place.size.width);
            width = std::min(font.advance(text.c_str()), std::max(0.0f, place.size.width));
        } else if (left + width > place.size.width) {
            break;
        }
        left += width;
        _crumbs.push_back({part, text, -left, 0});
        if (name.empty() || part == home)
            break;
    }
    std::ranges::reverse(_crumbs);
    for (Crumb& crumb : _crumbs) {
        crumb.left = std::floor(place.origin.x + left + crumb.left);
        crumb.right = std::ceil(crumb.left + font.advance(crumb.text.c_str()));
    }
    _path = path;
    _place = place;
    _fontRevision = font._currentRevision();
}

const std::string* _KXPathCrumbs::pathAt(KXPoint point) const {
    const auto found = std::ranges::find_if(_crumbs, [&](const Crumb& crumb) {
        return point.x >= crumb.left && point.x < crumb.right && point.y >= _place.origin.y &&
               point.y < _place.origin.y + _place.size.height;
    });
    return found == _crumbs.end() ? nullptr : &found->path;
}

// The one under the pointer is underlined.
void _KXPathCrumbs::draw(KXFont& font, KXColor color) const {
    const float top = _place.origin.y + _KXUIWidget::KXUIWidgetInnerPadding.height;
    const std::string* const under = pathAt(KXMousePoint);
    for (const Crumb& crumb : _crumbs) {
        font._printPlain({crumb.left, top}, color, crumb.text.c_str());
        if (&crumb != &_crumbs.back())
            font._printPlain({crumb.right, top}, {color.r, color.g, color.b, color.a / 2}, separator);
        if (&crumb.path == under)
            KXDrawRectFill(
                {{crumb.left, top + std::ceil(font.ascender()) + 1}, {crumb.right - crumb.left, 1}}, color);
    }
}
