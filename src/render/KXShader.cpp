#include <Kobaltrix/KXShader.h>

#include "core/ground/ErrorSlot.h"
#include "render/DrawBatch.h"
#include "render/GLCheck.h"
#include "render/GLFunctions.h"
#include "render/GraphicsContext.h"
#include "render/Pen.h"
#include "render/ShaderProgram.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iterator>
#include <string>

namespace {
constexpr char corners[] = "#version 120\n"
                           "varying vec2 kxPlace;\n"
                           "varying vec4 kxColor;\n"
                           "void main() {\n"
                           "    gl_Position = ftransform();\n"
                           "    kxPlace = (gl_TextureMatrix[0] * vec4(gl_MultiTexCoord0.xy, 0.0, 1.0)).xy;\n"
                           "    kxColor = gl_Color;\n"
                           "}\n";
// Round the game's own source. Its lines are counted from those before on.
constexpr char before[] = "#version 120\n"
                          "uniform sampler2D kxTexture; uniform vec2 kxTexel; uniform float kxProduct; "
                          "varying vec2 kxPlace; varying vec4 kxColor;\n"
                          "#define main kxMain\n",
               behind[] = "\n#undef main\n"
                          "void main() {\n"
                          "    kxMain();\n"
                          "    if (kxProduct > 0.5)\n"
                          "        gl_FragColor.rgb *= gl_FragColor.a;\n"
                          "}\n";
constexpr auto linesBefore = std::count(std::begin(before), std::end(before), '\n');

// The first complaint of a driver's log, as "line 3: ...". Drivers write "0:6(12): error", "0(6) : error" or
// "ERROR: 0:6: ".
std::string complaint(const std::string& log) {
    const std::string first = log.substr(0, log.find('\n'));
    for (std::size_t at = 0; (at = first.find('0', at)) != std::string::npos; ++at) {
        const bool isNumber = at + 2 < first.size() && (first[at + 1] == ':' || first[at + 1] == '(') &&
                              std::isdigit(static_cast<unsigned char>(first[at + 2]));
        if (!isNumber)
            continue;
        const long line = std::strtol(first.c_str() + at + 2, nullptr, 10) - linesBefore;
        const std::size_t text = first.find_first_not_of(" )", first.find_first_of(":)", at + 2) + 1);
        return "line " + std::to_string(std::max(1L, line)) + ": " +
               (text == std::string::npos ? first : first.substr(text));
    }
    return first;
}

template<class Ask>
std::string logOf(GLuint name, const Ask& ask) {
    char text[400] = "";
    ask(name, sizeof text, nullptr, text);
    return text;
}

// Adds a shader to a program. False with a text in the error slot if the source has a mistake.
bool attach(GLuint program, GLenum kind, const char* const* sources, int count) {
    const GLuint shader = _KXGL.createShader(kind);
    _KXGL.shaderSource(shader, count, sources, nullptr);
    _KXGL.compileShader(shader);
    GLint compiled = GL_FALSE;
    _KXGL.getShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (!compiled)
        _KXReportError("Unable to make a shader: %s",
                       complaint(logOf(shader, _KXGL.getShaderInfoLog)).c_str());
    _KXGL.attachShader(program, shader);
    _KXGL.deleteShader(shader); // with the program
    return compiled;
}

GLuint makeProgram(const char* source) {
    if (!_KXCurrentGraphicsContext || !_KXGL.getUniformLocation || !source) {
        _KXReportError("Unable to make a shader: %s", !source                      ? "there is no source"
                                                      : !_KXCurrentGraphicsContext ? "no window is current"
                                                                                   : "the driver has none");
        return 0;
    }
    const GLuint program = _KXGL.createProgram();
    const char* const vertex = corners;
    const char* const fragment[] = {before, source, behind};
    if (attach(program, GL_VERTEX_SHADER, &vertex, 1) && attach(program, GL_FRAGMENT_SHADER, fragment, 3)) {
        _KXGL.linkProgram(program);
        GLint linked = GL_FALSE;
        _KXGL.getProgramiv(program, GL_LINK_STATUS, &linked);
        if (linked)
            return program;
        _KXReportError("Unable to make a shader: %s",
                       complaint(logOf(program, _KXGL.getProgramInfoLog)).c_str());
    }
    glGetError(); // out of memory: told here, not by the next check that finds it
    _KXGL.deleteProgram(program);
    return 0;
}

unsigned nextVersion() {
    static constinit unsigned last = 0;
    return ++last;
}
} // namespace

KXShader::Program::~Program() {
    const _KXGraphicsContextScope scope(graphicsContext);
    if (program && scope)
        _KXGL.deleteProgram(program);
}

bool KXShader::Program::isUsableHere() const {
    return program && graphicsContext == _KXCurrentGraphicsContext;
}

KXShader::KXShader(const char* source) : _contents(std::make_unique<Program>()) {
    KX_GL_CHECK("KXShader::KXShader");
    Program& made = *_contents;
    made.program = makeProgram(source);
    made.graphicsContext = _KXCurrentGraphicsContext;
    made.version = nextVersion();
    if (!made.program)
        return;
    made.texture = _KXGL.getUniformLocation(made.program, "kxTexture");
    made.texel = _KXGL.getUniformLocation(made.program, "kxTexel");
    made.product = _KXGL.getUniformLocation(made.program, "kxProduct");
}

KXShader::~KXShader() {
    _KXFlushBatch(KXDrawFlushTextureChange);
    _KXForgetShader(_contents.get());
}

int KXShader::isUsable() const { return _contents->program ? -1 : 0; }

int KXShader::_set(const char* name, const float* values, int count, KXTexture* texture) {
    Program& changed = *_contents;
    const _KXGraphicsContextScope scope(changed.graphicsContext);
    const int location =
        changed.program && scope && name ? _KXGL.getUniformLocation(changed.program, name) : -1;
    if (location < 0) {
        _KXReportError("A shader has no value %s", name ? name : "(null)");
        return 0;
    }
    auto value = std::find_if(changed.values.begin(), changed.values.end(),
                              [=](const _KXShaderValue& known) { return known.location == location; });
    if (value == changed.values.end())
        value = changed.values.insert(value, {location, count, {}, nullptr});
    value->count = count;
    value->texture = texture;
    std::copy_n(values, count, value->numbers);
    changed.version = nextVersion();
    _KXShaderHasChanged(changed);
    return -1;
}

int KXShader::setFloat(const char* name, float value) { return _set(name, &value, 1, nullptr); }

int KXShader::setPoint(const char* name, KXPoint value) {
    const float numbers[] = {value.x, value.y};
    return _set(name, numbers, 2, nullptr);
}

int KXShader::setColor(const char* name, KXColor value) {
    const float numbers[] = {value.r, value.g, value.b, value.a};
    return _set(name, numbers, 4, nullptr);
}

int KXShader::setMatrix(const char* name, const float* values) {
    return _set(values ? name : nullptr, values, 16, nullptr);
}

int KXShader::setTexture(const char* name, KXTexture* texture) { return _set(name, nullptr, 0, texture); }
