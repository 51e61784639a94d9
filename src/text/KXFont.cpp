#include <Kobaltrix/KXFont.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/HeapGlobal.h"
#include "core/ground/Truncate.h"
#include "platform/FilePath.h"
#include "render/GLCheck.h"
#include "render/GraphicsContext.h"
#include "render/TextScopes.h"
#include "text/ColorEscapes.h"
#include "text/Face.h"
#include "text/GlyphInk.h"
#include "text/Typeface.h"
#include "util/Utf8.h"
#include "util/WholeFile.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>
#include <string_view>
#include <vector>

struct KXFont::Offsets {
    std::map<float, KXPoint> bySize;
};

// What layouts draw with. It is opened when the first of them asks.
struct KXFont::Sources {
    std::vector<std::shared_ptr<const _KXFontSource>> all; // its own first
    _KXTypefaces typefaces = {};
    int size = -1; // of the typefaces

    static std::unique_ptr<Sources> of(std::shared_ptr<const _KXFontSource> source) {
        return std::unique_ptr<Sources>(new Sources{{std::move(source)}});
    }
};

static constexpr std::size_t textSize = 1024;
static constinit unsigned lastRevision = 0;

KXFont::KXFont() { throw std::bad_alloc(); }

KXFont::KXFont(std::unique_ptr<Sources> sources, int mode)
    : _size(0), _aliasMode(mode == KXAliasModePolygon ? KXAliasModePolygon : KXAliasModeTexture),
      _revision(++lastRevision), _sources(std::move(sources)),
      _font(_KXOpenFace(*_sources->all.front(), _aliasMode)), _offsets(new Offsets) {
    KXFont::setSize(10);
}

// What cannot be opened by its name is read.
static std::shared_ptr<const _KXFontSource> sourceAt(const char* path) {
    constexpr std::size_t largest = std::size_t{256} << 20;
    std::string bytes;
    if (*path && _KXPathForPlainC(path).empty())
        _KXReadWholeFile(path, largest, bytes);
    return std::make_shared<_KXFontSource>(path, std::move(bytes));
}

KXFont::KXFont(const char* path, int mode) : KXFont(Sources::of(sourceAt(path ? path : "")), mode) {}

KXFont::KXFont(const void* bytes, std::size_t size, int mode)
    : KXFont(Sources::of(std::make_shared<_KXFontSource>(
                 "", bytes ? std::string(static_cast<const char*>(bytes), size) : "")),
             mode) {}

KXFont::~KXFont() {
    KX_GL_CHECK("KXFont::~KXFont");
    _font.reset(); // it calls OpenGL
}

int KXFont::setSize(int size) {
    KX_GL_CHECK("KXFont::setSize");
    // A face counts its pixels per em in 16 bits; FTGL would wrap what does not fit.
    constexpr int largest = 65535;
    if (size == _size)
        return -1;
    if (size < 0 || size > largest || !_font->FaceSize(static_cast<unsigned>(size), 72)) {
        _KXReportError("Unable to set font face size");
        return 0;
    }
    _size = size;
    _revision = ++lastRevision;
    return -1;
}

int KXFont::getSize() const { return _size; }

KXAliasMode KXFont::_aliasModeInUse() const { return _aliasMode; }

/// A number that no other font has had, nor this one at an earlier size: what was measured at another one
/// must be measured anew.
unsigned KXFont::_currentRevision() const { return _revision; }

void KXFont::addFallback(const KXFont& font) {
    _sources->all.push_back(font._sources->all.front());
    _sources->size = -1;
}

/// Its own at its size and the fallbacks', those that could be opened.
const _KXTypefaces& KXFont::_typefacesInUse() const {
    if (_sources->size == _size)
        return _sources->typefaces;
    _KXTypefaces typefaces;
    for (const auto& source : _sources->all)
        if (auto typeface = _KXTypeface::open(source, _size))
            typefaces.push_back(std::move(typeface));
    _sources->typefaces = std::move(typefaces);
    _sources->size = _size;
    return _sources->typefaces;
}

void KXFont::setRenderingOffsetForSize(int size, KXPoint offset) {
    _offsets->bySize[static_cast<float>(size)] = offset;
}

KXPoint KXFont::renderingOffsetForSize(int) const {
    const auto found = _offsets->bySize.find(static_cast<float>(_size));
    return found == _offsets->bySize.end() ? KXZeroPoint : found->second;
}

KXSize KXFont::stringBounds(const char* text) const { return stringBounds(text, 0); }

KXSize KXFont::stringBounds(const char* text, int raw) const {
    KX_GL_CHECK("KXFont::stringBounds");
    if (!text || _font->Error())
        return KXZeroSize;
    char visible[textSize];
    if (!raw) {
        _KXVisibleText(visible, sizeof visible, text);
        text = visible;
    }
    const FTBBox box = _font->BBox(text);
    return {box.Upper().Xf() - box.Lower().Xf(), box.Upper().Yf() - box.Lower().Yf()};
}

float KXFont::lineHeight() const { return _font->LineHeight(); }
float KXFont::ascender() const { return _font->Ascender(); }
float KXFont::descender() const { return _font->Descender(); }

float KXFont::advance(const char* text) const {
    KX_GL_CHECK("KXFont::advance");
    return _font->Advance(text);
}

float KXFont::fullHeight() const {
    return ascender() + static_cast<float>(std::abs(_KXTruncate(descender())));
}

namespace {
// Each of these prints pieces of a text, one behind another.

class PolygonPrinter {
public:
    PolygonPrinter(FTFont& font, KXPoint origin) : _font(font), _scope(origin) {}

    void operator()(const char* piece, KXColor color) {
        _scope.setColor(color);
        _scope.moveBy(_font.Render(piece).Xf());
    }

private:
    FTFont& _font;
    _KXPolygonTextScope _scope;
};

class GlyphPrinter {
public:
    GlyphPrinter(FTFont& font, int size, KXPoint origin)
        : _font(font), _origin(origin),
          _raster(_scope.rasterFor(size)), _run{_KXGlyphsHere(), _KXInkSize(size, _raster.scale),
                                                _raster.scale, keptQuads()} {}
    ~GlyphPrinter() { _KXCurrentGlyphRun = nullptr; }
    GlyphPrinter(const GlyphPrinter&) = delete;
    GlyphPrinter& operator=(const GlyphPrinter&) = delete;

    void operator()(const char* piece, KXColor color) {
        _run.quads.clear();
        _KXCurrentGlyphRun = &_run;
        const float advance = _font.Render(piece).Xf();
        KXPoint origin = _origin;
        const bool isSharp = _scope.settle(origin, _raster);
        for (_KXGlyphQuad& glyph : _run.quads)
            for (KXPoint& corner : glyph.corners)
                corner = {origin.x + corner.x * _raster.unit.x,
                          origin.y - corner.y * _raster.unit.y}; // FTGL's y axis points up
        _KXDrawGlyphQuads(_run.quads.data(), static_cast<int>(_run.quads.size()), color, isSharp);
        _origin.x += advance;
    }

private:
    static std::vector<_KXGlyphQuad>& keptQuads() {
        static constinit _KXHeapGlobal<std::vector<_KXGlyphQuad>> quads; // text is printed in every frame
        return quads.get();
    }

    FTFont& _font;
    KXPoint _origin;
    const _KXGlyphScope _scope;
    const _KXGlyphRaster _raster;
    _KXGlyphRun _run;
};
} // namespace

// Prints each stretch of one colour by itself. FTGL reads to the terminator, so the stretch is terminated in
// place meanwhile. The last one, which may be empty, is in @a color and leaves it as OpenGL's current colour.
template<class Printer>
static void printColored(Printer&& print, char* text, KXColor color) {
    const auto printPart = [&](std::string_view part, KXColor partColor) {
        char* const start = text + (part.data() - text);
        const char behind = start[part.size()];
        start[part.size()] = 0;
        print(start, partColor);
        start[part.size()] = behind;
    };
    const char* position = text;
    _KXColorSpan span;
    while (_KXNextColorSpan(position, span)) {
        printPart(span.plain, color);
        printPart(span.text, span.color);
    }
    printPart(position, color);
}

KXPoint KXFont::_originOf(KXPoint p) const {
    const KXPoint offset = renderingOffsetForSize(_size);
    return {p.x + offset.x, p.y - std::ceil(-ascender()) - std::ceil(-descender()) + offset.y};
}

bool KXFont::_canPrint() const { return !_font->Error() && _KXCurrentGraphicsContext; }

void KXFont::print(KXPoint p, KXColor c, const char* format, ...) {
    KX_GL_CHECK("KXFont::print");
    if (!format || !_canPrint())
        return;
    char text[textSize];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length < 0)
        return;
    if (static_cast<std::size_t>(length) >= sizeof text - 1) // also the full length: the arguments may be cut
        _KXDropCutCharacter(text, sizeof text - 1);
    if (_aliasMode == KXAliasModePolygon)
        printColored(PolygonPrinter(*_font, _originOf(p)), text, c);
    else
        printColored(GlyphPrinter(*_font, _size, _originOf(p)), text, c);
}

/// Prints a text of any length as it is: no format, and braces are braces.
void KXFont::_printPlain(KXPoint p, KXColor c, const char* text) {
    KX_GL_CHECK("KXFont::_printPlain");
    if (!_canPrint())
        return;
    if (_aliasMode == KXAliasModePolygon)
        PolygonPrinter(*_font, _originOf(p))(text, c);
    else
        GlyphPrinter(*_font, _size, _originOf(p))(text, c);
}
