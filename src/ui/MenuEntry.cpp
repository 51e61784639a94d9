#include "ui/MenuEntry.h"

#include "input/Keyboard.h"
#include "platform/Desktop.h"
#include "ui/Description.h"
#include "ui/WholePixels.h"
#include "util/TextOrder.h"
#include "util/Utf8.h"

#include <Kobaltrix/KXPointMath.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTexture.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

std::string _KXShortcutText(KXUIShortcut shortcut) {
    if (shortcut.key == KXKeyNone)
        return "";
    struct Sign {
        int modifier;
        const char *name, *sign; // on macOS
    };
    static constexpr Sign signs[] = {{KXUICommand, "Ctrl+", ""},
                                     {KXUIAlt, "Alt+", "⌥"},
                                     {KXUIShift, "Shift+", "⇧"},
                                     {KXUICommand, "", "⌘"}};
    std::string text;
    for (const Sign& each : signs)
        if (shortcut.modifiers & each.modifier)
            text += _KXIsMac ? each.sign : each.name;
    return text + _KXKeyNameText(shortcut.key);
}

const char* KXUIShortcutName(KXUIShortcut shortcut) {
    return KXTempString("%s", _KXShortcutText(shortcut).c_str());
}

char32_t _KXFirstLetter(const char* text) {
    const std::string folded = _KXFoldedText(text);
    std::string_view rest = folded;
    return _KXTakeCharacter(rest);
}

char32_t _KXOnlyCharacter(const std::string& text) {
    return _KXCountCharacters(text) == 1 ? _KXFirstLetter(text.c_str()) : 0;
}

_KXMenuEntry::_KXMenuEntry(const KXUIMenuEntry& entry)
    : id(entry.id), kind(entry.kind), isChecked(entry.checked && entry.kind != KXUIMenuEntryPlain),
      isEnabled(entry.enabled), icon(entry.icon), iconSource(entry.iconSource) {
    if (!entry.text)
        return;
    setText(entry.text);
    setShortcut(entry.shortcut);
}

bool _KXMenuEntry::setText(const char* text) {
    constexpr char mark = 1; // stands before the letter that is underlined, among colour spans
    if (caption && _text == text)
        return false;
    std::string whole = text, shown, marked;
    char32_t letter = 0;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (whole[i] == '&' && i + 1 < whole.size() && whole[++i] != '&' && !letter) {
            letter = _KXFirstLetter(whole.c_str() + i);
            marked = shown + mark;
        }
        shown += whole[i];
        marked += whole[i];
    }
    const auto at = _KXSpokenText(marked.c_str()).find(mark);
    const char32_t first = _KXFirstLetter(_KXSpokenText(shown.c_str()).c_str());
    caption = std::make_unique<_KXCaption>(std::move(shown));
    _text = std::move(whole);
    mnemonic = letter;
    mnemonicAt = letter ? static_cast<int>(at) : -1;
    firstLetter = first;
    return true;
}

void _KXMenuEntry::setShortcut(KXUIShortcut keys) {
    std::string name = _KXShortcutText(keys);
    shortcutName = name.empty() ? nullptr : std::make_unique<_KXCaption>(std::move(name));
    shortcut = keys;
}

void _KXMenuEntry::add(const KXUIMenuEntry* added, int count) {
    std::vector<std::unique_ptr<_KXMenuEntry>> made;
    for (int i = 0; i < count; ++i)
        made.push_back(std::make_unique<_KXMenuEntry>(added[i]));
    entries.reserve(entries.size() + made.size()); // all that may lack memory
    std::move(made.begin(), made.end(), std::back_inserter(entries));
    isMenu = true;
    forgetMeasures();
    for (const auto& entry : entries) // of several radio entries beside one another the last one holds
        if (entry->kind == KXUIMenuEntryRadio && entry->isChecked)
            setChecked(*entry, true);
}

_KXMenuEntry* _KXMenuEntry::find(int wanted, _KXMenuEntry*& parent) {
    for (const auto& entry : entries) {
        if (entry->id == wanted && wanted) {
            parent = this;
            return entry.get();
        }
        if (_KXMenuEntry* const found = entry->find(wanted, parent))
            return found;
    }
    return nullptr;
}

_KXMenuEntry* _KXMenuEntry::withShortcut(int key, int other, int modifiers, _KXMenuEntry*& parent) {
    for (const auto& entry : entries) {
        if (!entry->isSelectable())
            continue;
        const KXUIShortcut& keys = entry->shortcut;
        if (!entry->isMenu && keys.key != KXKeyNone && (keys.key == key || keys.key == other) &&
            keys.modifiers == modifiers) {
            parent = this;
            return entry.get();
        }
        if (_KXMenuEntry* const found = entry->withShortcut(key, other, modifiers, parent))
            return found;
    }
    return nullptr;
}

int _KXMenuEntry::nextSelectable(int from, int step) const {
    const int count = static_cast<int>(entries.size());
    int next = from == -1 && step < 0 ? count : from;
    for (int i = 0; i < count; ++i) {
        next = (next + step + count) % count;
        if (entries[next]->isSelectable())
            return next;
    }
    return -1;
}

void _KXMenuEntry::setChecked(_KXMenuEntry& entry, bool checked) {
    if (entry.kind == KXUIMenuEntryPlain)
        return;
    const auto found = std::ranges::find(entries, &entry, &std::unique_ptr<_KXMenuEntry>::get);
    const int index = static_cast<int>(found - entries.begin()), count = static_cast<int>(entries.size());
    const auto isBeside = [&](int i) {
        return i >= 0 && i < count && entries[i]->kind == KXUIMenuEntryRadio;
    };
    if (entry.kind == KXUIMenuEntryRadio && checked)
        for (const int way : {-1, 1})
            for (int i = index + way; isBeside(i); i += way)
                entries[i]->isChecked = false;
    entry.isChecked = checked;
}

KXSize _KXMenuIconSize(const _KXMenuEntry& entry) {
    if (!entry.icon)
        return KXZeroSize;
    KXDrawOptions options;
    options.source = entry.iconSource;
    const KXSize size = entry.icon->placed(options).bounds.size;
    return {std::ceil(size.width), std::ceil(size.height)};
}

static int widthOf(const KXFont* font, const std::unique_ptr<_KXCaption>& caption) {
    return font && caption ? _KXWholePixel(_KXCaption::widthOf(*font, caption->text())) : 0;
}

const _KXMenuRows& _KXMenuEntry::measured(const KXFont* font, bool asTitles) {
    const unsigned revision = font ? font->_currentRevision() : 0;
    const KXSize padding = _KXUIWidget::KXUIWidgetInnerPadding;
    if (rows.isMeasured && rows.font == font && rows.fontRevision == revision && rows.padding == padding)
        return rows;
    asTitles ? measureTitles(font) : measureColumn(font);
    rows.font = font;
    rows.fontRevision = revision;
    rows.padding = padding;
    rows.isMeasured = true;
    return rows;
}

// Between two things in a row.
static int gapOf() {
    return 2 * std::clamp(_KXWholePixel(_KXUIWidget::KXUIWidgetInnerPadding.width), 1, 1000);
}

// Of a row with a text, as high as a letter may be.
static int lineOf(const KXFont* font) {
    constexpr int withoutFont = 12;
    const int padding = std::clamp(_KXWholePixel(_KXUIWidget::KXUIWidgetInnerPadding.height), 0, 1000);
    return (font ? std::max(1, _KXWholePixel(std::ceil(font->ascender()))) : withoutFont) + 2 * padding + 2;
}

void _KXMenuEntry::measureColumn(const KXFont* font) {
    const int gap = gapOf(), line = lineOf(font), mark = line - gap;
    int marks = 0, texts = 0, shortcuts = 0, at = 0;
    bool hasArrows = false;
    std::vector<int> starts = {0};
    for (const auto& entry : entries) {
        const KXSize picture = _KXMenuIconSize(*entry);
        if (entry->kind != KXUIMenuEntryPlain)
            marks = std::max(marks, mark);
        marks = std::max(marks, _KXWholePixel(picture.width));
        texts = std::max(texts, widthOf(font, entry->caption));
        shortcuts = std::max(shortcuts, widthOf(font, entry->shortcutName));
        hasArrows |= entry->isMenu;
        const int height = entry->isLine() ? line / 2 : std::max(line, _KXWholePixel(picture.height) + 2);
        at = std::min(at + height, 1 << 30);
        starts.push_back(at);
    }
    rows.gap = gap;
    rows.textLeft = gap + (marks ? marks + gap : 0);
    rows.shortcutLeft = rows.textLeft + texts + (shortcuts ? 2 * gap : 0);
    rows.arrowLeft = rows.shortcutLeft + shortcuts + gap;
    rows.width = rows.arrowLeft + (hasArrows ? line / 2 + gap / 2 : 0);
    rows.line = line;
    rows.starts = std::move(starts);
}

void _KXMenuEntry::measureTitles(const KXFont* font) {
    const int gap = gapOf();
    std::vector<int> starts = {0};
    for (const auto& entry : entries)
        starts.push_back(starts.back() + widthOf(font, entry->caption) + 2 * gap);
    rows.width = starts.back();
    rows.line = lineOf(font);
    rows.gap = gap;
    rows.starts = std::move(starts);
}
