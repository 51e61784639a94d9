#pragma once

// Framebuffer objects. Where a driver has none, the functions do nothing.

/// Makes a framebuffer object that draws into a texture, bound. 0 if the driver has none.
/// @param status takes the driver's completeness status.
unsigned _KXCreateFramebuffer(unsigned texture, unsigned* status);
/// Deletes a framebuffer object.
void _KXDeleteFramebuffer(unsigned framebuffer);
/// Binds a framebuffer object; 0 is the window.
void _KXBindFramebuffer(unsigned framebuffer);

/// Directs reading and drawing at the window itself for as long as the scope lasts.
class _KXDefaultFramebufferScope {
public:
    _KXDefaultFramebufferScope();
    ~_KXDefaultFramebufferScope();
    _KXDefaultFramebufferScope(const _KXDefaultFramebufferScope&) = delete;
    _KXDefaultFramebufferScope& operator=(const _KXDefaultFramebufferScope&) = delete;

private:
    int _previous = 0;
};
