#include "text/Typeface.h"

#include "core/ground/HeapGlobal.h"
#include "platform/FilePath.h"

#include <freetype/tttables.h>
#include <hb-ft.h>
#include <hb-ot.h>
#include <hb.h>

#include <algorithm>
#include <cmath>
#include <new>

static constinit _KXHeapGlobal<std::vector<std::weak_ptr<_KXTypeface>>> opened;

static std::shared_ptr<FT_LibraryRec_> sharedLibrary() {
    static constinit _KXHeapGlobal<std::weak_ptr<FT_LibraryRec_>> kept;
    std::shared_ptr<FT_LibraryRec_> library = kept.get().lock();
    if (library)
        return library;
    FT_Library made = nullptr;
    if (FT_Init_FreeType(&made) != 0)
        throw std::bad_alloc();
    library.reset(made, FT_Done_FreeType);
    kept.get() = library;
    return library;
}

static constinit std::uint32_t lastNumber = 0;

_KXFontSource::_KXFontSource(std::string file, std::string content)
    : path(std::move(file)), bytes(std::move(content)), number(++lastNumber) {}

_KXFontSource::~_KXFontSource() { _KXForgetGlyphsOf(number); }

std::shared_ptr<_KXTypeface> _KXTypeface::open(const std::shared_ptr<const _KXFontSource>& source, int size) {
    auto& all = opened.get();
    std::erase_if(all, [](const auto& typeface) { return typeface.expired(); });
    for (const auto& typeface : all)
        if (const auto found = typeface.lock();
            found->_size == size &&
            (found->_source == source || (source->bytes.empty() && found->_source->bytes.empty() &&
                                          found->_source->path == source->path)))
            return found;
    std::shared_ptr<_KXTypeface> made(new _KXTypeface(source));
    if (size <= 0 || !made->load(size))
        return nullptr;
    all.push_back(made);
    return made;
}

_KXTypeface::_KXTypeface(std::shared_ptr<const _KXFontSource> source)
    : _source(std::move(source)), _library(sharedLibrary()) {}

_KXTypeface::~_KXTypeface() {
    if (_shaper)
        hb_font_destroy(_shaper);
    if (_face)
        FT_Done_Face(_face);
}

bool _KXTypeface::load(int size) {
    const std::string& bytes = _source->bytes;
    const FT_Error error =
        bytes.empty() ? FT_New_Face(_library.get(), _KXPathForPlainC(_source->path).c_str(), 0, &_face)
                      : FT_New_Memory_Face(_library.get(), reinterpret_cast<const FT_Byte*>(bytes.data()),
                                           static_cast<FT_Long>(bytes.size()), 0, &_face);
    if (error != 0) {
        _face = nullptr;
        return false;
    }
    if (!setSize(size))
        return false;
    _size = size;
    measure();
    return true;
}

bool _KXTypeface::setSize(int size) {
    if (FT_IS_SCALABLE(_face)) {
        if (FT_Set_Char_Size(_face, 0, size * 64, 72, 72) != 0)
            return false;
        _shaper = hb_ft_font_create_referenced(_face);
        hb_ft_font_set_load_flags(_shaper, _KXGlyphLoadFlags);
        return true;
    }
    // Pictures come in a size or a few, of which the last is the largest.
    if (!FT_HAS_COLOR(_face) || FT_Select_Size(_face, _face->num_fixed_sizes - 1) != 0 ||
        _face->size->metrics.y_ppem == 0)
        return false;
    _strikeScale = static_cast<float>(size) / static_cast<float>(_face->size->metrics.y_ppem);
    _shaper = hb_ft_font_create_referenced(_face);
    hb_ot_font_set_funcs(_shaper); // which scale what the file says, and do not ask the pictures
    hb_font_set_scale(_shaper, size * 64, size * 64);
    return true;
}

void _KXTypeface::measure() {
    _capHeight = 0.7f * ascent();
    const auto* table = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(_face, FT_SFNT_OS2));
    if (table && table->version >= 2 && table->version != 0xFFFF && table->sCapHeight > 0)
        _capHeight = units(FT_MulFix(table->sCapHeight, _face->size->metrics.y_scale));
    else if (const FT_UInt h = FT_Get_Char_Index(_face, 'H');
             h && FT_Load_Glyph(_face, h, _KXGlyphLoadFlags) == 0)
        _capHeight = units(_face->glyph->metrics.horiBearingY);
    if (FT_Load_Char(_face, ' ', _KXGlyphLoadFlags) == 0)
        _blankWidth = units(_face->glyph->advance.x);
}

bool _KXTypeface::has(std::uint32_t character) const { return FT_Get_Char_Index(_face, character) != 0; }

float _KXTypeface::ascent() const { return std::ceil(units(_face->size->metrics.ascender)); }
float _KXTypeface::descent() const { return std::ceil(units(-_face->size->metrics.descender)); }
float _KXTypeface::gap() const {
    const FT_Size_Metrics& metrics = _face->size->metrics;
    return std::max(0.0f, std::ceil(units(metrics.height - metrics.ascender + metrics.descender)));
}

const _KXGlyphInk* _KXTypeface::ink(_KXGlyphStore& store, std::uint32_t glyph, float scale, float grown) {
    return _KXInkOf(
        store, _face,
        {_source->number, glyph, _KXInkSize(_size, scale), static_cast<std::uint32_t>(grown * scale * 64)});
}
