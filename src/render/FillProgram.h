#pragma once

// With the fixed pipeline a draw call is either textured or not. This small program tells for each corner, so
// that fills need not break a run of sprites.

/// Has the program draw for as long as the scope lasts, where it does exactly what the fixed pipeline would
/// and the driver can run it.
class _KXFillProgramScope {
public:
    _KXFillProgramScope();
    ~_KXFillProgramScope();
    _KXFillProgramScope(const _KXFillProgramScope&) = delete;
    _KXFillProgramScope& operator=(const _KXFillProgramScope&) = delete;

    /// Whether the program draws.
    explicit operator bool() const { return _active; }

private:
    bool _active;
};

/// Forgets the program of an OpenGL context that ends.
void _KXForgetFillProgram(unsigned graphicsContext);
