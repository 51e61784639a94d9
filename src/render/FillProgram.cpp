#include "render/FillProgram.h"

#include "render/ContextParts.h"
#include "render/GLFunctions.h"

// @param source in two pieces, which are one text.
static void attach(GLuint program, GLenum kind, const char* const (&source)[2]) {
    const GLuint shader = _KXGL.createShader(kind);
    _KXGL.shaderSource(shader, 2, source, nullptr);
    _KXGL.compileShader(shader);
    _KXGL.attachShader(program, shader);
    _KXGL.deleteShader(shader); // with the program
}

static constexpr char mixedCorners[] =
    "varying float fill;\n"
    "void main() {\n"
    "    gl_Position = ftransform();\n"
    "    gl_FrontColor = gl_Color;\n"
    "    gl_TexCoord[0] = gl_TextureMatrix[0] * vec4(gl_MultiTexCoord0.xy, 0.0, 1.0);\n"
    "    fill = gl_MultiTexCoord0.z;\n"
    "}\n";
static constexpr char mixedColor[] = "uniform sampler2D image;\n"
                                     "varying float fill;\n"
                                     "void main() {\n"
                                     "    vec4 color = gl_Color;\n"
                                     "    if (fill > 0.5)\n"
                                     "        color *= texture2D(image, gl_TexCoord[0].xy);\n";
// With the second, software draws upright quads its fast way. It knows just this shape: one texture, one
// multiplication, and the place on the texture before the colour, which is therefore no gl_FrontColor.
static constexpr struct {
    const char *vertexShader[2], *fragmentShader[2];
} sources[] = {
    {{mixedCorners, ""}, {mixedColor, "    gl_FragColor = color;\n}\n"}},
    {{"varying vec4 color;\n"
      "void main() {\n"
      "    gl_Position = ftransform();\n"
      "    gl_TexCoord[0] = gl_TextureMatrix[0] * vec4(gl_MultiTexCoord0.xy, 0.0, 1.0);\n"
      "    color = gl_Color;\n"
      "}\n",
      ""},
     {"uniform sampler2D image;\n"
      "varying vec4 color;\n"
      "void main() {\n"
      "    gl_FragColor = texture2D(image, gl_TexCoord[0].xy) * color;\n"
      "}\n",
      ""}},
    {{mixedCorners, ""}, {mixedColor, "    gl_FragColor = vec4(color.rgb * color.a, color.a);\n}\n"}}};

static unsigned makeProgram(_KXFillProgram which) {
    if (!_KXGL.createProgram)
        return 0;
    const auto& [vertexShader, fragmentShader] = sources[static_cast<int>(which)];
    const GLuint program = _KXGL.createProgram();
    attach(program, GL_VERTEX_SHADER, vertexShader);
    attach(program, GL_FRAGMENT_SHADER, fragmentShader);
    _KXGL.linkProgram(program);
    GLint linked = GL_FALSE;
    _KXGL.getProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked)
        return program;
    glGetError(); // out of memory: told here, not by the next check that finds it
    _KXGL.deleteProgram(program);
    return 0;
}

static unsigned programOfCurrentContext(_KXFillProgram which) {
    std::optional<unsigned>& program = _KXCurrentContextParts().fillPrograms[static_cast<int>(which)];
    if (!program)
        program = makeProgram(which);
    return *program;
}

bool _KXIsPlainPipeline() {
    for (const GLenum extra :
         {GL_LIGHTING, GL_FOG, GL_COLOR_SUM, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP, GL_CLIP_PLANE0,
          GL_CLIP_PLANE1, GL_CLIP_PLANE2, GL_CLIP_PLANE3, GL_CLIP_PLANE4, GL_CLIP_PLANE5})
        if (glIsEnabled(extra))
            return false;
    GLint environment = 0, program = 0, unit = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    glGetIntegerv(GL_ACTIVE_TEXTURE, &unit);
    return environment == GL_MODULATE && program == 0 && unit == GL_TEXTURE0 && glIsEnabled(GL_TEXTURE_2D);
}

_KXFillProgramScope::_KXFillProgramScope(_KXFillProgram which) : _active(false) {
    const unsigned program = programOfCurrentContext(which);
    if (program == 0 || !_KXIsPlainPipeline())
        return;
    _KXGL.useProgram(program);
    _active = true;
}

_KXFillProgramScope::~_KXFillProgramScope() {
    if (_active)
        _KXGL.useProgram(0);
}
