#pragma once

#include "ui/Caption.h"

#include <Kobaltrix/KXUIMenuBar.h>

#include <memory>
#include <string>
#include <vector>

/// Where the entries of a column stand, or the titles of a bar, in whole pixels; kept until font or entries
/// change.
struct _KXMenuRows {
    std::vector<int> starts = {0}; ///< Of each entry from the first one's start, and where the last one ends.
    int gap = 0;                   ///< Between two things in a row.
    int textLeft = 0;              ///< From the column's left, behind marks and icons.
    int shortcutLeft = 0;          ///< Of the widest shortcut.
    int arrowLeft = 0;             ///< Of the arrows of sub-menus.
    int width = 0;                 ///< Of the whole column.
    int line = 0;                  ///< Height of an entry without an icon.

    const KXFont* font = nullptr; ///< What they were measured for.
    unsigned fontRevision = 0;
    KXSize padding = {0, 0};
    bool isMeasured = false;
};

/// An entry, with those of its sub-menu.
class _KXMenuEntry {
public:
    explicit _KXMenuEntry(const KXUIMenuEntry& entry);

    /// @return whether it is another one.
    bool setText(const char* text);
    void setShortcut(KXUIShortcut shortcut);

    bool isLine() const { return !caption; }
    /// Whether the user can come to it.
    bool isSelectable() const { return caption && isEnabled && (!isMenu || !entries.empty()); }

    /// Adds entries behind the others, all or none of them.
    void add(const KXUIMenuEntry* added, int count);
    /// The first below this with an id, null for none. @param parent is set to the one that it is in.
    _KXMenuEntry* find(int wanted, _KXMenuEntry*& parent);
    /// The first entry that can be chosen by keys, null for none. @param other another label of the key, as a
    /// Latin keyboard would have it.
    /// @param parent is set to the one that it is in.
    _KXMenuEntry* withShortcut(int key, int other, int modifiers, _KXMenuEntry*& parent);
    /// The next that the user can come to, around the ends; -1 for none. @param from -1 to begin at an end.
    int nextSelectable(int from, int step) const;
    /// The next of these of which something holds, which may be the one that it begins from.
    template<class Holds>
    int nextWhere(int from, Holds holds) const {
        int next = nextSelectable(from, 1);
        for (std::size_t i = 0; i < entries.size() && next != -1; ++i, next = nextSelectable(next, 1))
            if (holds(*entries[next]))
                return next;
        return -1;
    }
    /// Sets or takes away the mark of an entry of this.
    void setChecked(_KXMenuEntry& entry, bool checked);

    /// Where its entries stand: below one another, or beside as titles.
    const _KXMenuRows& measured(const KXFont* font, bool asTitles);
    /// To be called when what it measures has changed.
    void forgetMeasures() { rows.isMeasured = false; }

    std::unique_ptr<_KXCaption> caption;      ///< Null for a line.
    std::unique_ptr<_KXCaption> shortcutName; ///< Null without a shortcut.
    char32_t mnemonic = 0;                    ///< In lower case; 0 for none.
    int mnemonicAt = -1;                      ///< The index of its character in what is seen of the caption.
    char32_t firstLetter = 0;                 ///< Of the caption, in lower case.
    int id = 0;
    KXUIShortcut shortcut;
    KXUIMenuEntryKind kind = KXUIMenuEntryPlain;
    bool isChecked = false, isEnabled = true;
    bool isMenu = false; ///< It has a sub-menu, which may be empty.
    KXTexture* icon = nullptr;
    KXRect iconSource = {{0, 0}, {-1, -1}};
    std::vector<std::unique_ptr<_KXMenuEntry>> entries;

private:
    void measureColumn(const KXFont* font);
    void measureTitles(const KXFont* font);

    std::string _text;
    _KXMenuRows rows;
};

/// The pixels that an icon is drawn in, rounded up.
KXSize _KXMenuIconSize(const _KXMenuEntry& entry);
/// What is written for a shortcut.
std::string _KXShortcutText(KXUIShortcut shortcut);
/// The first character of a text in lower case, 0 for none.
char32_t _KXFirstLetter(const char* text);
/// The same of a text of one character, 0 for others.
char32_t _KXOnlyCharacter(const std::string& text);
