#pragma once

// Small programs that draw what the fixed pipeline would.
enum class _KXFillProgram {
    Mixed,   ///< Tells for each corner whether it is textured, so that fills need not break a run of sprites.
    Texture, ///< All corners are textured: what software draws fastest.
    Product  ///< As the first, of colours that it multiplies by their alpha.
};

/// Has a program draw for as long as the scope lasts, where it does exactly what the fixed pipeline would and
/// the driver can run it.
class _KXFillProgramScope {
public:
    explicit _KXFillProgramScope(_KXFillProgram which);
    ~_KXFillProgramScope();
    _KXFillProgramScope(const _KXFillProgramScope&) = delete;
    _KXFillProgramScope& operator=(const _KXFillProgramScope&) = delete;

    /// Whether the program draws.
    explicit operator bool() const { return _active; }

private:
    bool _active;
};

/// Whether OpenGL does no more than multiply a texture with a colour: the game has no program of its own and
/// has switched nothing on that the fixed pipeline would do besides.
bool _KXIsPlainPipeline();
