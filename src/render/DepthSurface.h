#pragma once

// What a window is drawn into has no depth buffer until the window is in 3D mode for the first time: drivers
// that draw in software take their slow ways wherever there is one, be depth tested or not. From then on the
// window is drawn into a framebuffer object that has one, and shown by copying that to the platform's
// surface.

/// The framebuffer that stands for the surface of the window whose context is current; 0 is the platform's.
unsigned _KXSurfaceFramebuffer();
/// Gives the surface of the current context depth, and a size in pixels. What was drawn stays; where the
/// surface was bound it is bound again. False, with nothing changed, if the driver refuses.
bool _KXUseDepthSurface(int width, int height);
/// Copies what was drawn to the platform's surface, before that is shown.
void _KXCopyDepthSurface();
/// Forgets the surface of an OpenGL context that ends.
void _KXForgetDepthSurface(unsigned graphicsContext);
