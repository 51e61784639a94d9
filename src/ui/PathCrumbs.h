#pragma once

#include <Kobaltrix/KXTypes.h>

#include <string>
#include <vector>

class KXFont;

/// A folder's path as a line of names, from the root or from the user's own folder, each of which leads to
/// one. It is measured where something has changed.
class _KXPathCrumbs {
public:
    /// Lays the line out; of a path that is too long the beginning is left out, of a name its beginning.
    void update(const KXFont& font, const std::string& path, KXRect place);
    void draw(KXFont& font, KXColor color) const;
    /// The path under a position, null if there is none.
    const std::string* pathAt(KXPoint point) const;

private:
    struct Crumb {
        std::string path, text;
        float left, right;
    };
    std::vector<Crumb> _crumbs;
    std::string _path;
    KXRect _place = {{0, 0}, {-1, -1}};
    unsigned _fontRevision = 0;
};
