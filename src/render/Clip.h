#pragma once

/// Where drawing is limited to: a box of pixels of the target, from its bottom left.
struct _KXClip {
    int x, y, width, height; ///< A negative side is none: nothing is drawn.
    bool limits;             ///< Whether the box is heeded.
};

/// The limit of the current OpenGL context. Windows and textures that are drawn into share it.
_KXClip _KXCurrentClip();
/// Sets it for what is drawn from now on.
void _KXSetClip(const _KXClip& clip);
