#pragma once

// Framebuffer objects. Where a driver has none, the functions do nothing.

/// Makes a framebuffer object that draws into a texture, bound. 0 if the driver has none.
/// @param status takes the driver's completeness status.
unsigned _KXCreateFramebuffer(unsigned texture, unsigned* status);
/// Deletes a framebuffer object.
void _KXDeleteFramebuffer(unsigned framebuffer);
/// Binds a framebuffer object.
void _KXBindFramebuffer(unsigned framebuffer);
/// Binds what stands for the surface of the window whose context is current.
void _KXBindSurface();

/// Directs reading and drawing at the window itself for as long as the scope lasts.
class _KXSurfaceScope {
public:
    _KXSurfaceScope();
    ~_KXSurfaceScope();
    _KXSurfaceScope(const _KXSurfaceScope&) = delete;
    _KXSurfaceScope& operator=(const _KXSurfaceScope&) = delete;

private:
    int _previous = 0;
};
