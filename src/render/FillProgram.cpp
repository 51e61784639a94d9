#include "render/FillProgram.h"

#include "core/ground/HeapGlobal.h"
#include "render/GLFunctions.h"
#include "render/KXRenderContext.h"

#include <algorithm>
#include <vector>

namespace {
struct ContextProgram {
    unsigned context;
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

static unsigned makeProgram() {
    if (!_KXGL.createProgram)
        return 0;
    const GLuint program = _KXGL.createProgram();
    attach(program, GL_VERTEX_SHADER,
           "varying float fill;\n"
           "void main() {\n"
           "    gl_Position = ftransform();\n"
           "    gl_FrontColor = gl_Color;\n"
           "    gl_TexCoord[0] = gl_TextureMatrix[0] * vec4(gl_MultiTexCoord0.xy, 0.0, 1.0);\n"
           "    fill = gl_MultiTexCoord0.z;\n"
           "}\n");
    attach(program, GL_FRAGMENT_SHADER,
           "uniform sampler2D image;\n"
           "varying float fill;\n"
           "void main() {\n"
           "    vec4 texel = vec4(1.0);\n"
           "    if (fill > 0.5)\n"
           "        texel = texture2D(image, gl_TexCoord[0].xy);\n"
           "    if (fill > 1.5)\n"
           "        texel.rgb = vec3(1.0);\n" // a glyph is all opacity
           "    gl_FragColor = texel * gl_Color;\n"
           "}\n");
    _KXGL.linkProgram(program);
    GLint linked = GL_FALSE;
    _KXGL.getProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked)
        return program;
    _KXGL.deleteProgram(program);
    return 0;
}

static unsigned programOfCurrentContext() {
    for (const ContextProgram& entry : programs.get())
        if (entry.context == _KXCurrentGraphicsContext)
            return entry.program;
    programs.get().push_back({_KXCurrentGraphicsContext, makeProgram()});
    return programs.get().back().program;
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

_KXFillProgramScope::_KXFillProgramScope() : _active(false) {
    const unsigned program = programOfCurrentContext();
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
