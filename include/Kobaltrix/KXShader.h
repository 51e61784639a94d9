#pragma once

#include <Kobaltrix/KXTypes.h>

#include <memory>

/// @file
/// Shaders: small programs that the graphics driver runs for each pixel of what is drawn.

class KXTexture;

/// A fragment program in GLSL 1.20, with values by name. It is used like a blend mode: for one draw
/// (KXDrawOptions::shader), or pushed for all that follows; for a whole window, draw into a texture and draw
/// that with it.
///
/// @code
/// KXShader waves("uniform float time;\n"
///                "void main() {\n"
///                "    vec2 place = kxPlace + vec2(0.02 * sin(40.0 * kxPlace.y + time), 0.0);\n"
///                "    gl_FragColor = texture2D(kxTexture, place) * kxColor;\n"
///                "}\n");
/// waves.setFloat("time", seconds);
/// picture.draw({.shader = &waves});
/// @endcode
///
/// The source has a main() that sets gl_FragColor and no \#version. It finds these, declared already:
/// - `uniform sampler2D kxTexture`: what is drawn, white for shapes, white with opacity for text;
/// - `varying vec2 kxPlace`: the place on it, from (0, 0) at the top left to (1, 1);
/// - `varying vec4 kxColor`: the tint or the colour, with the opacity;
/// - `uniform vec2 kxTexel`: what a pixel of the texture is of that.
///
/// A shader that cannot be had (the driver has none, the source has a mistake) is there all the same: what is
/// drawn with it is drawn plainly. It belongs to the window that was current when it was made, and elsewhere
/// draws plainly, too. Needs the thread that owns the OpenGL context.
class KX_API KXShader final {
public:
    /// Compiles a program. On failure isUsable() is 0 and KXError() has what the driver says, with the line
    /// of the source: "line 3: ...".
    explicit KXShader(const char* source);
    /// Ends it. Where it is pushed, nothing is in its place.
    ~KXShader();
    KXShader(const KXShader&) = delete;
    KXShader& operator=(const KXShader&) = delete;

    /// -1 if it can be drawn with, 0 if not.
    int isUsable() const;

    /// Sets a `float`; all values are 0 at first. In a batch each draw has the values of its time, and a
    /// change begins another draw call. @param name of a uniform of the source. @param value any.
    /// @return -1 on success, 0 with a text in KXError() if there is no such name: what a program does not
    /// use, the driver strikes out.
    int setFloat(const char* name, float value);
    /// Sets a `vec2`. @return as setFloat().
    int setPoint(const char* name, KXPoint value);
    /// Sets a `vec4`, of red, green, blue and alpha. @return as setFloat().
    int setColor(const char* name, KXColor value);
    /// Sets a `mat4`. @param name as of setFloat(). @param values sixteen, column by column. Null counts as
    /// an unknown name.
    /// @return as setFloat().
    int setMatrix(const char* name, const float* values);
    /// Sets a `sampler2D` to a texture of the same window, which must live as long as it is drawn with; null
    /// for none, and then black. Up to four of them. @return as setFloat().
    int setTexture(const char* name, KXTexture* texture);

    // Used by the library itself.
    struct KX_INTERNAL Program;
    KX_INTERNAL const Program* _program() const { return _contents.get(); }

private:
    KX_INTERNAL int _set(const char* name, const float* values, int count, KXTexture* texture);

    std::unique_ptr<Program> _contents;
};

/// Has everything that the library draws drawn with a shader, until KXPopShader(); null for none. They nest.
/// Polygons of other OpenGL do not heed it.
KX_API void KXPushShader(KXShader* shader);
/// Has drawing as before the last KXPushShader(). Without one it does nothing.
KX_API void KXPopShader();
