#pragma once

#include "render/Clip.h"

#include <Kobaltrix/KXTypes.h>

/// The part of a limit that a rectangle of the target covers, whatever camera is pushed.
_KXClip _KXClipWithin(const _KXClip& limit, KXRect rect);

/// Limits drawing to a rectangle for as long as the scope lasts, within the limit that the game has set and
/// that holds again afterwards. The rectangle is in the coordinates that are drawn in, wherever the matrices
/// and the camera of the moment put them: in a window, in a texture, moved or scaled by the game. Of a turned
/// rectangle it is the box around it. Without a window it does nothing.
///
/// OpenGL's own limit would let a batch out. So where the rectangle lies on whole pixels, what is drawn into
/// a batch is cut to it on its way there, by ClipSink; until something cannot be cut, or the batch is let out
/// for another reason, after which the matrices may be others: from then on OpenGL's limit holds.
class _KXClipScope {
public:
    explicit _KXClipScope(KXRect rect);
    ~_KXClipScope();
    _KXClipScope(const _KXClipScope&) = delete;
    _KXClipScope& operator=(const _KXClipScope&) = delete;

private:
    friend void _KXLeaveCutsToOpenGL();
    static void leaveToOpenGL(_KXClipScope* scope);

    bool _active, _cuts = false;
    _KXClip _previous = {};
    struct {
        int left, bottom, right, top;
    } _pixels = {};
    KXRect _cut = KXZeroRect;
    _KXClipScope* _outer = nullptr; // that cuts as well
};
