#include "text/Face.h"

#include "platform/FilePath.h"
#include "render/GraphicsContext.h"
#include "text/GlyphInk.h"
#include "util/Utf8.h"

#include <type_traits>

namespace {
template<class Base>
class Face final : public Base {
public:
    template<class... Source>
    explicit Face(std::uint32_t font, Source... source)
        : Base(source...), _font(font), _opened(Base::Error() == 0) {
        if (usesTextures && _opened)
            Base::GlyphLoadFlags(_KXGlyphLoadFlags); // FTGL's own texture font has the same
    }
    ~Face() override { forgetGlyphs(); }

    using Base::Advance;
    using Base::BBox;
    using Base::FaceSize;
    using Base::Render;

    bool FaceSize(const unsigned size, const unsigned resolution) override {
        if (!_opened)
            return false;
        // FTGL deletes its display lists even where their context is gone.
        const _KXGraphicsContextScope scope(_glyphContext, _KXWithoutContext::HaveNone);
        _glyphContext = 0;
        _sized = Base::FaceSize(size, resolution);
        return _sized;
    }

    FT_Error Error() const override { return _sized ? 0 : FT_Err_Invalid_Size_Handle; }

    FTBBox BBox(const char* text, const int length, FTPoint position, FTPoint spacing) override {
        return prepare(text) ? Base::BBox(_KXLegibleText(text).get(), length, position, spacing) : FTBBox();
    }

    float Advance(const char* text, const int length, FTPoint spacing) override {
        return prepare(text) ? Base::Advance(_KXLegibleText(text).get(), length, spacing) : 0.0f;
    }

    FTPoint Render(const char* text, const int length, FTPoint position, FTPoint spacing, int mode) override {
        if (!prepare(text) || !_KXCurrentGraphicsContext)
            return position;
        return Base::Render(_KXLegibleText(text).get(), length, position, spacing, mode);
    }

protected:
    FTGlyph* MakeGlyph(FT_GlyphSlot slot) override {
        if (!_KXCurrentGraphicsContext)
            return nullptr;
        if constexpr (usesTextures) {
            return _KXMakeFTGLGlyph(slot, _font);
        } else {
            _glyphContext = _KXCurrentGraphicsContext;
            return Base::MakeGlyph(slot);
        }
    }

private:
    static constexpr bool usesTextures = std::is_same_v<Base, FTFont>;

    bool prepare(const char* text) {
        if (_KXCurrentGraphicsContext && _glyphContext != _KXCurrentGraphicsContext)
            forgetGlyphs();
        return _sized && text;
    }

    // Setting the size, even the same one, is what makes FTGL let go of its glyphs.
    void forgetGlyphs() {
        if (_glyphContext)
            FaceSize(Base::FaceSize(), 72);
    }

    std::uint32_t _font;
    bool _opened;
    bool _sized = false;
    unsigned _glyphContext = 0; // whose display lists the glyphs are; 0 while there are none
};
} // namespace

template<class Base>
static std::unique_ptr<FTFont> open(const _KXFontSource& source) {
    if (source.bytes.empty())
        return std::make_unique<Face<Base>>(source.number, _KXPathForPlainC(source.path).c_str());
    return std::make_unique<Face<Base>>(
        source.number, reinterpret_cast<const unsigned char*>(source.bytes.data()), source.bytes.size());
}

std::unique_ptr<FTFont> _KXOpenFace(const _KXFontSource& source, KXAliasMode mode) {
    return mode == KXAliasModePolygon ? open<FTPolygonFont>(source) : open<FTFont>(source);
}
