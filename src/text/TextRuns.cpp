#include "text/TextRuns.h"

#include "util/Utf8.h"

#include <fribidi.h>
#include <hb.h>
#include <linebreak.h>

#include <algorithm>
#include <memory>
#include <new>

bool _KXShapedText::mayBreakBefore(std::uint32_t character) const {
    return character > 0 && breaks[character - 1] == LINEBREAK_ALLOWBREAK;
}

std::uint32_t _KXShapedText::afterCluster(std::uint32_t character) const {
    do
        ++character;
    while (character < size() && roles[character] == _KXTextRole::Inner);
    return character;
}

static hb_unicode_funcs_t* unicode() { return hb_unicode_funcs_get_default(); }

static hb_unicode_general_category_t categoryOf(std::uint32_t character) {
    return hb_unicode_general_category(unicode(), character);
}

static bool isMark(std::uint32_t character) {
    const auto category = categoryOf(character);
    return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK;
}

static constexpr std::uint32_t joiner = 0x200D;

// Marks, what chooses a variant, and what joins letters or keeps them apart.
static bool goesWithTheOneBefore(std::uint32_t character) {
    return isMark(character) || character == 0x200C || character == joiner;
}

static _KXTextRole roleOf(std::uint32_t character) {
    switch (categoryOf(character)) {
    case HB_UNICODE_GENERAL_CATEGORY_CONTROL:
        return character == '\t' ? _KXTextRole::Tab : _KXTextRole::Silent;
    case HB_UNICODE_GENERAL_CATEGORY_LINE_SEPARATOR:
    case HB_UNICODE_GENERAL_CATEGORY_PARAGRAPH_SEPARATOR:
        return _KXTextRole::Silent;
    case HB_UNICODE_GENERAL_CATEGORY_SPACE_SEPARATOR: // less those that keep words together
        return character == 0xA0 || character == 0x2007 || character == 0x202F ? _KXTextRole::Letter
                                                                               : _KXTextRole::Blank;
    default:
        return _KXTextRole::Letter;
    }
}

static void readCharacters(_KXShapedText& shaped, std::string_view text) {
    std::uint32_t offset = 0;
    for (std::string_view rest = text; !rest.empty();
         offset = static_cast<std::uint32_t>(text.size() - rest.size())) {
        shaped.offsets.push_back(offset);
        shaped.characters.push_back(_KXTakeCharacter(rest));
    }
    shaped.offsets.push_back(static_cast<std::uint32_t>(text.size()));
}

// libunibreak ends the program at half a flag and takes the last code point of the first plane for the end.
static std::uint32_t breakableAs(std::uint32_t character) {
    const bool isFlag = character >= 0x1F1E6 && character <= 0x1F1FF;
    return isFlag || character == 0xFFFF ? 'a' : character;
}

static void findBreaks(_KXShapedText& shaped) {
    static const bool initialised = (init_linebreak(), true);
    static_cast<void>(initialised);
    shaped.breaks.resize(shaped.size());
    std::vector<std::uint32_t> known(shaped.size());
    std::transform(shaped.characters.begin(), shaped.characters.end(), known.begin(), breakableAs);
    if (!known.empty())
        set_linebreaks_utf32(known.data(), known.size(), "", shaped.breaks.data());
}

static bool endsLine(std::uint32_t character) {
    return (character >= '\n' && character <= '\r') || character == 0x85 || character == 0x2028 ||
           character == 0x2029;
}

static void findParagraphs(_KXShapedText& shaped) {
    std::uint32_t begin = 0;
    for (std::uint32_t i = 0; i < shaped.size(); ++i) {
        if (!endsLine(shaped.characters[i]) || shaped.breaks[i] != LINEBREAK_MUSTBREAK)
            continue;
        const bool isPair = i > begin && shaped.characters[i] == '\n' && shaped.characters[i - 1] == '\r';
        shaped.paragraphs.push_back({begin, isPair ? i - 1 : i, 0});
        begin = i + 1;
    }
    shaped.paragraphs.push_back({begin, shaped.size(), 0});
}

// Which way a paragraph runs, and each of its characters.
static void findLevels(_KXShapedText& shaped, _KXTextParagraph& paragraph, KXTextDirection direction) {
    const std::uint32_t* const text = shaped.characters.data() + paragraph.begin;
    const auto count = static_cast<FriBidiStrIndex>(paragraph.end - paragraph.begin);
    const bool isPlain = std::all_of(text, text + count, [](std::uint32_t c) { return c < 0x590; });
    if (direction != KXTextDirectionRightToLeft && isPlain)
        return; // nothing in it runs from right to left
    FriBidiParType base = direction == KXTextDirectionRightToLeft   ? FRIBIDI_PAR_RTL
                          : direction == KXTextDirectionLeftToRight ? FRIBIDI_PAR_LTR
                                                                    : FRIBIDI_PAR_ON;
    if (count > 0) {
        const auto length = static_cast<std::size_t>(count);
        std::vector<FriBidiCharType> types(length);
        std::vector<FriBidiBracketType> brackets(length);
        std::vector<FriBidiLevel> levels(length);
        fribidi_get_bidi_types(text, count, types.data());
        fribidi_get_bracket_types(text, count, types.data(), brackets.data());
        if (!fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &base, levels.data()))
            throw std::bad_alloc();
        std::transform(levels.begin(), levels.end(), shaped.levels.begin() + paragraph.begin,
                       [](FriBidiLevel level) { return static_cast<std::uint8_t>(std::max<int>(0, level)); });
    }
    paragraph.level = FRIBIDI_IS_RTL(base) ? 1 : 0;
}

namespace {
// What must be the same within a run.
struct Kind {
    std::uint16_t typeface;
    hb_script_t script;
    std::uint8_t level;

    bool operator==(const Kind&) const = default;
};

class Shaper {
public:
    Shaper(_KXShapedText& shaped, const _KXTypefaces& typefaces)
        : _shaped(shaped), _typefaces(typefaces), _buffer(hb_buffer_create(), hb_buffer_destroy) {}

    void shape(const _KXTextParagraph& paragraph);

private:
    std::uint16_t typefaceFor(std::uint32_t begin, std::uint32_t end) const;
    void chooseTypefaces(const _KXTextParagraph& paragraph);
    void findScripts(const _KXTextParagraph& paragraph);
    void addRun(std::uint32_t begin, std::uint32_t end, const Kind& kind);
    void addGlyphs(_KXTextRun& run, hb_script_t script);

    _KXShapedText& _shaped;
    const _KXTypefaces& _typefaces;
    std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> _buffer;
    std::vector<Kind> _kinds; // of the paragraph's characters
};
} // namespace

// The first typeface that has a letter with all its marks, or else the letter, or else the first of all.
std::uint16_t Shaper::typefaceFor(std::uint32_t begin, std::uint32_t end) const {
    const std::uint32_t* const text = _shaped.characters.data();
    const auto has = [&](std::size_t typeface, std::uint32_t character) {
        return categoryOf(character) == HB_UNICODE_GENERAL_CATEGORY_FORMAT ||
               _typefaces[typeface]->has(character);
    };
    for (const std::uint32_t last : {end, begin + 1})
        for (std::size_t i = 0; i < _typefaces.size(); ++i)
            if (std::all_of(text + begin, text + last, [&](std::uint32_t c) { return has(i, c); }))
                return static_cast<std::uint16_t>(i);
    return 0;
}

void Shaper::chooseTypefaces(const _KXTextParagraph& paragraph) {
    for (std::uint32_t i = paragraph.begin, end; i < paragraph.end; i = end) {
        end = i + 1;
        while (end < paragraph.end && goesWithTheOneBefore(_shaped.characters[end]))
            ++end;
        const std::uint16_t typeface = typefaceFor(i, end);
        for (std::uint32_t c = i; c < end; ++c)
            _kinds[c - paragraph.begin].typeface = typeface;
    }
}

// Signs that all scripts share go with the letters before them; the first ones with those behind.
void Shaper::findScripts(const _KXTextParagraph& paragraph) {
    hb_script_t last = HB_SCRIPT_COMMON;
    std::size_t without = 0; // at the start, of no script yet
    for (std::size_t i = 0; i < _kinds.size(); ++i) {
        const hb_script_t own = hb_unicode_script(unicode(), _shaped.characters[paragraph.begin + i]);
        if (own != HB_SCRIPT_COMMON && own != HB_SCRIPT_INHERITED && own != HB_SCRIPT_UNKNOWN) {
            last = own;
            for (; without < i && _kinds[without].script == HB_SCRIPT_COMMON; ++without)
                _kinds[without].script = own;
        }
        _kinds[i].script = last;
        _kinds[i].level = _shaped.levels[paragraph.begin + i];
    }
}

void Shaper::shape(const _KXTextParagraph& paragraph) {
    _kinds.assign(paragraph.end - paragraph.begin, {0, HB_SCRIPT_COMMON, 0});
    chooseTypefaces(paragraph);
    findScripts(paragraph);
    const auto standsAlone = [&](std::uint32_t i) {
        return _shaped.roles[i] == _KXTextRole::Tab || _shaped.roles[i] == _KXTextRole::Silent;
    };
    for (std::uint32_t i = paragraph.begin, end; i < paragraph.end; i = end) {
        const Kind& kind = _kinds[i - paragraph.begin];
        end = i + 1;
        while (end < paragraph.end && !standsAlone(i) && !standsAlone(end) &&
               _kinds[end - paragraph.begin] == kind)
            ++end;
        addRun(i, end, kind);
    }
}

void Shaper::addRun(std::uint32_t begin, std::uint32_t end, const Kind& kind) {
    const auto glyphs = static_cast<std::uint32_t>(_shaped.glyphs.size());
    _KXTextRun run = {begin, end, glyphs, glyphs, kind.typeface, kind.level};
    if (_shaped.roles[begin] == _KXTextRole::Letter || _shaped.roles[begin] == _KXTextRole::Blank)
        addGlyphs(run, kind.script);
    _shaped.runs.push_back(run);
}

void Shaper::addGlyphs(_KXTextRun& run, hb_script_t script) {
    hb_buffer_t* const buffer = _buffer.get();
    hb_buffer_clear_contents(buffer);
    // With what stands around the run: Arabic letters join those of another colour or typeface.
    hb_buffer_add_codepoints(buffer, _shaped.characters.data(), static_cast<int>(_shaped.size()), run.begin,
                             static_cast<int>(run.end - run.begin));
    hb_buffer_set_direction(buffer, run.level % 2 ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, script);
    if (!hb_buffer_allocation_successful(buffer))
        throw std::bad_alloc();
    hb_shape(_typefaces[run.typeface]->shaper(), buffer, nullptr, 0);
    unsigned count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer, &count);
    const auto pixels = [](hb_position_t length) { return static_cast<float>(length) / 64; };
    // What no glyph begins with is drawn with the character before it.
    for (std::uint32_t i = run.begin + 1; i < run.end; ++i)
        _shaped.widths[i] = -1;
    for (unsigned i = 0; i < count; ++i) {
        const std::uint32_t character = infos[i].cluster;
        float& width = _shaped.widths[character];
        width = std::max(0.0f, width) + pixels(positions[i].x_advance);
        _shaped.glyphs.push_back({character, infos[i].codepoint, pixels(positions[i].x_offset),
                                  -pixels(positions[i].y_offset), pixels(positions[i].x_advance)});
    }
    for (std::uint32_t i = run.begin + 1; i < run.end; ++i)
        if (_shaped.widths[i] < 0) {
            _shaped.widths[i] = 0;
            _shaped.roles[i] = _KXTextRole::Inner;
        }
    run.endGlyph = static_cast<std::uint32_t>(_shaped.glyphs.size());
}

// Not between a letter and its marks, nor where letters are one by a sign that joins them (a virama).
static void findStops(_KXShapedText& shaped) {
    constexpr hb_unicode_combining_class_t virama = HB_UNICODE_COMBINING_CLASS_VIRAMA;
    for (std::uint32_t i = 0; i < shaped.size(); ++i) {
        const std::uint32_t before = i == 0 ? 0 : shaped.characters[i - 1];
        const bool joins = shaped.roles[i] == _KXTextRole::Inner &&
                           (before == joiner || hb_unicode_combining_class(unicode(), before) == virama);
        shaped.stops[i] =
            !joins && (shaped.roles[i] != _KXTextRole::Inner || !goesWithTheOneBefore(shaped.characters[i]));
    }
}

_KXShapedText _KXShapeText(std::string_view text, const _KXTypefaces& typefaces, KXTextDirection direction) {
    _KXShapedText shaped;
    readCharacters(shaped, text);
    findBreaks(shaped);
    std::transform(shaped.characters.begin(), shaped.characters.end(), std::back_inserter(shaped.roles),
                   roleOf);
    shaped.levels.resize(shaped.size());
    shaped.widths.resize(shaped.size());
    shaped.stops.resize(shaped.size());
    findParagraphs(shaped);
    Shaper shaper(shaped, typefaces);
    for (_KXTextParagraph& paragraph : shaped.paragraphs) {
        findLevels(shaped, paragraph, direction);
        shaper.shape(paragraph);
    }
    findStops(shaped);
    return shaped;
}
