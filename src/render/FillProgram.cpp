#include "render/FillProgram.h"

#include "core/ground/HeapGlobal.h"
#include "render/GLFunctions.h"
#include "render/KXRenderContext.h"

#include <algorithm>
#include <vector>

namespace {
struct ContextProgram {
    unsigned context;
    _KXFillProgram which;
    unsigned program; // 0 where the driver has none
};
} // namespace

static constinit _KXHeapGlobal<std::vector<ContextProgram>> programs;

static void attach(GLuint program, GLenum kind, const char* source) {
    const GLuint shader = _KXGL.createShader(kind);
    _KXGL.shaderSource(shader, 1, &source, nullptr);
    _KXGL.compileShader(shader);
    _KXGL.attachShader(program, shader);
    _KXGL.deleteShader(shader); // with the program
}

// With the second, software draws upright quads its fast way. It knows just this shape: one texture, one
// multiplication, and the place on the texture before the colour, which is therefore no gl_FrontColor.
static constexpr struct {
    const char *vertexShader, *fragmentShader;
} sources[] = {{"varying float fill;\n"
                "void main() {\n"
                "    gl_Position = ftransform();\n"
                "    gl_FrontColor = gl_Color;\n"
                "    gl_TexCoord[0] = gl_TextureMatrix[0] * vec4(gl_MultiTexCoord0.xy, 0.0, 1.0);\n"
                "    fill = gl_MultiTexCoord0.z;\n"
                "}\n",
                "uniform sampler2D image;\n"
                "varying float fill;\n"
                "void main() {\n"
                "    vec4 texel = vec4(1.0);\n"
                "    if (fill > 0.5)\n"
                "        texel = texture2D(image, gl_TexCoord[0].xy);\n"
                "    gl_FragColor = texel * gl_Color;\n"
                "}\n"},
               {"varying vec4 color;\n"
                "void main() {\n"
                "    gl_Position = ftransform();\n"
                "    gl_TexCoord[0] = gl_TextureMatrix[0] * vec4(gl_MultiTexCoord0.xy, 0.0, 1.0);\n"
                "    color = gl_Color;\n"
                "}\n",
                "uniform sampler2D image;\n"
                "varying vec4 color;\n"
                "void main() {\n"
                "    gl_FragColor = texture2D(image, gl_TexCoord[0].xy) * color;\n"
                "}\n"}};

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
    _KXGL.deleteProgram(program);
    return 0;
}

static unsigned programOfCurrentContext(_KXFillProgram which) {
    for (const ContextProgram& entry : programs.get())
        if (entry.context == _KXCurrentGraphicsContext && entry.which == which)
            return entry.program;
    return programs.get().emplace_back(_KXCurrentGraphicsContext, which, makeProgram(which)).program;
}

// Whether the game has switched nothing on that the program does not do.
static bool isPlainPipeline() {
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
    if (program == 0 || !isPlainPipeline())
        return;
    _KXGL.useProgram(program);
    _active = true;
}

_KXFillProgramScope::~_KXFillProgramScope() {
    if (_active)
        _KXGL.useProgram(0);
}

void _KXForgetFillProgram(unsigned graphicsContext) {
    const auto ended = [graphicsContext](const ContextProgram& entry) {
        return entry.context == graphicsContext;
    };
    if (programs.find() && std::erase_if(programs.get(), ended) > 0 && programs.get().empty())
        programs.free();
}
