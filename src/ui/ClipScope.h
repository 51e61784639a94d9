#pragma once

#include <Kobaltrix/KXTypes.h>

/// Limits drawing to a rectangle for as long as the scope lasts, within the limit that was set before, which
/// then is as it was.
///
/// The rectangle is in the coordinates that drawing has at the moment: in a window, in a texture, at any
/// scale and under the game's own matrix. One that is turned limits to the box around it.
class _KXClipScope {
public:
    explicit _KXClipScope(KXRect rect);
    ~_KXClipScope();
    _KXClipScope(const _KXClipScope&) = delete;
    _KXClipScope& operator=(const _KXClipScope&) = delete;

private:
    bool _active = false;
    unsigned char _wasEnabled = 0;
    int _previous[4] = {};
};
