#pragma once

#include "render/Clip.h"

#include <Kobaltrix/KXTypes.h>

/// The part of a limit that a rectangle of the target covers, whatever camera is pushed.
_KXClip _KXClipWithin(const _KXClip& limit, KXRect rect);

/// Limits drawing to a rectangle for as long as the scope lasts, within the limit that the game has set and
/// that holds again afterwards. The rectangle is in the coordinates that are drawn in, wherever the matrices
/// and the camera of the moment put them: in a window, in a texture, moved or scaled by the game. Of a turned
/// rectangle it is the box around it. Without a window it does nothing.
class _KXClipScope {
public:
    explicit _KXClipScope(KXRect rect);
    ~_KXClipScope();
    _KXClipScope(const _KXClipScope&) = delete;
    _KXClipScope& operator=(const _KXClipScope&) = delete;

private:
    bool _active;
    _KXClip _previous = {};
};
