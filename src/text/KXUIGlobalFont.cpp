#include "text/KXUIGlobalFont.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/Truncate.h"
#include "util/KXString.h"

#include <cmath>
#include <cstdlib>

static int roundedUp(float value) { return _KXTruncate(std::ceil(value)); }

int KXUISetGlobalFont(const char* path, KXAliasMode mode, int size, KXPoint offset) {
    char* copy = path ? _KXCopyForCaller(path) : nullptr; // before the old one is freed: it may be the same
    std::free(_KXUIGlobalFontPath);
    _KXUIGlobalFontPath = copy;
    _KXUIGlobalFontMode = mode;
    _KXUIGlobalFontOffset = offset;
    _KXUIGlobalFont = _KXUIGlobalFontWithSize(size);
    return -1;
}

KXFont* _KXUIGlobalFontWithSize(int size) {
    if (!_KXGlobalFontCache || !_KXUIGlobalFontPath)
        return nullptr;
    KXFont* font = _KXGlobalFontCache->fontAtPath(_KXUIGlobalFontPath, _KXUIGlobalFontMode, size);
    if (font)
        font->setRenderingOffsetForSize(size, _KXUIGlobalFontOffset);
    return font;
}

void _KXUIForgetGlobalFont() {
    std::free(_KXUIGlobalFontPath);
    _KXUIGlobalFontPath = nullptr;
    _KXUIGlobalFont = nullptr;
    _KXUIGlobalFontMode = KXAliasMode(0);
    _KXUIGlobalFontOffset = KXZeroPoint;
}

void _KXUIGlobalFontPrint(KXFont* font, KXPoint p, KXColor c, const char* text) {
    if (!font || !text)
        return;
    char formatted[1024];
    _KXFormatWithoutArguments(formatted, sizeof formatted, text);
    font->print(p, c, "%s", formatted);
}

int _KXUIGlobalFontLineHeight(KXFont* font) { return font ? roundedUp(font->lineHeight()) : 0; }

int _KXUIGlobalFontDescender(KXFont* font) { return font ? roundedUp(font->descender()) : 0; }

KXSize _KXUIGlobalFontStringBounds(KXFont* font, const char* text) {
    if (!font)
        return KXZeroSize;
    const KXSize bounds = font->stringBounds(text, 0);
    return {std::ceil(bounds.width), std::ceil(bounds.height)};
}

KXPoint _KXUIGlobalFontRenderingOffset(KXFont* font) {
    return font ? font->renderingOffsetForSize(font->getSize()) : KXZeroPoint;
}

void KXUIGlobalFontPrint(KXPoint p, KXColor c, const char* text) {
    _KXUIGlobalFontPrint(_KXUIGlobalFont, p, c, text);
}
void KXUIGlobalFontPrint(KXPoint p, KXColor c, int size, const char* text) {
    _KXUIGlobalFontPrint(_KXUIGlobalFontWithSize(size), p, c, text);
}

int KXUIGlobalFontLineHeight() { return _KXUIGlobalFontLineHeight(_KXUIGlobalFont); }
int KXUIGlobalFontLineHeight(int size) { return _KXUIGlobalFontLineHeight(_KXUIGlobalFontWithSize(size)); }

int KXUIGlobalFontDescender() { return _KXUIGlobalFontDescender(_KXUIGlobalFont); }
int KXUIGlobalFontDescender(int size) { return _KXUIGlobalFontDescender(_KXUIGlobalFontWithSize(size)); }

KXSize KXUIGlobalFontStringBounds(const char* text) {
    return _KXUIGlobalFontStringBounds(_KXUIGlobalFont, text);
}
KXSize KXUIGlobalFontStringBounds(int size, const char* text) {
    return _KXUIGlobalFontStringBounds(_KXUIGlobalFontWithSize(size), text);
}

KXPoint KXUIGlobalFontRenderingOffset() { return _KXUIGlobalFontRenderingOffset(_KXUIGlobalFont); }
KXPoint KXUIGlobalFontRenderingOffset(int size) {
    return _KXUIGlobalFontRenderingOffset(_KXUIGlobalFontWithSize(size));
}
