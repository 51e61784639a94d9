#include <Kobaltrix/KXFont.h>

#include "core/ground/ErrorSlot.h"
#include "platform/FilePath.h"
#include "text/SystemFonts.h"

#include <Kobaltrix/KXString.h>

#include <fontconfig/fontconfig.h>

#include <memory>
#include <string>

namespace {
struct DestroyPattern {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, DestroyPattern>;
} // namespace

static const char* valueOf(const Pattern& pattern, const char* object, int index) {
    FcChar8* value = nullptr;
    const bool has = FcPatternGetString(pattern.get(), object, index, &value) == FcResultMatch;
    return has ? reinterpret_cast<const char*>(value) : nullptr;
}

static bool areEqual(const char* a, const char* b) {
    return FcStrCmpIgnoreCase(reinterpret_cast<const FcChar8*>(a), reinterpret_cast<const FcChar8*>(b)) == 0;
}

// fontconfig gives another font rather than none.
static bool isOfFamily(const Pattern& font, const char* family) {
    for (const char* const kind : {"sans", "sans-serif", "serif", "monospace"})
        if (areEqual(kind, family))
            return true;
    for (int i = 0; const char* const one = valueOf(font, FC_FAMILY, i); ++i)
        if (areEqual(one, family))
            return true;
    return false;
}

static const char* fileOf(const char* name) {
    _KXLoadSystemFonts();
    const Pattern pattern(FcNameParse(reinterpret_cast<const FcChar8*>(name)));
    const char* const wanted = pattern ? valueOf(pattern, FC_FAMILY, 0) : nullptr;
    if (!wanted)
        return nullptr;
    const std::string family = wanted; // the system's own preferences come to stand before it
    if (!FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern))
        return nullptr;
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const Pattern font(FcFontMatch(nullptr, pattern.get(), &result));
    if (!font || !isOfFamily(font, family.c_str()))
        return nullptr;
    int index = 0; // in the file; others than the first cannot be asked for
    const bool isFirst =
        FcPatternGetInteger(font.get(), FC_INDEX, 0, &index) != FcResultMatch || (index & 0xFFFF) == 0;
    const char* const file = isFirst ? valueOf(font, FC_FILE, 0) : nullptr;
    return file ? KXTempString("%s", _KXTextOfPlainC(file).c_str()) : nullptr;
}

const char* KXFindFont(const char* name) {
    const char* const file = name ? fileOf(name) : nullptr;
    if (!file)
        _KXReportError("There is no font of the name %s", name ? name : "null");
    return file;
}
