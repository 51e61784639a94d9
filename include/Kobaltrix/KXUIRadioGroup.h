#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <memory>
#include <vector>

/// @file
/// Options of which one is chosen.

class KXUICheckBox;

/// A column of options with round marks, of which at most one is chosen.
///
/// @code
/// KXUIRadioGroup brush;
/// brush.add("Pencil");
/// brush.add("Bucket");
/// brush.setSelectedIndex(0);
/// brush.setOrigin({20, 20});
/// if (brush.poll()) // in a logic step
///     use(brush.selectedIndex());
/// @endcode
///
/// It is as large as its options and a click on one chooses it. Poll it with poll() and draw it with draw().
class KX_API KXUIRadioGroup : public _KXUIWidget {
public:
    /// A group without options.
    KXUIRadioGroup();
    ~KXUIRadioGroup() override;

    /// Adds an option below the others, with the group's font, and fits the group.
    /// @param text its caption, copied, laid out and no format; null is an empty one.
    void add(const char* text);
    /// How many options there are.
    int count() const;
    /// An option, for what the group has no setter for: its colours, a tooltip, whether it is enabled. It
    /// belongs to the group, which says whether it is checked. Null for a bad index.
    KXUICheckBox* option(int index);

    /// Chooses an option, or none of them for a bad index.
    void setSelectedIndex(int index);
    /// The option that is chosen, from 0 in the order added; -1 for none.
    int selectedIndex() const;

    /// Moves the group.
    void setOrigin(KXPoint origin) override;
    /// Like _KXUIWidget::setFont(), also for the options, and fits the group.
    int setFont(const char* path, KXAliasMode mode) override;
    /// Like _KXUIWidget::setFontSize(), also for the options, and fits the group.
    int setFontSize(int size) override;
    /// Also for the options. See _KXUIWidget::setWindowID().
    void setWindowID(unsigned id) override;

    /// Follows the mouse. Call it once per logic step. @return -1 when the user has chosen another option in
    /// this call, else 0.
    int poll();
    /// Draws the options.
    void draw() override;
    int pollInPanel() override; ///< poll(), and whether keys have chosen.
    /// Up and Down, Left and Right choose the option beside, Home and End the first and the last.
    int handleKey(const KXUIKey& key) override;
    KXRect focusRect() const override; ///< That of the option that is chosen.
    void refit() override;
    KXUIDescription description() const override; ///< The option that is chosen is its value.

private:
    KX_INTERNAL void _layOut();

    std::vector<std::unique_ptr<KXUICheckBox>> _options;
    int32_t _selected, _changedByKey;
};
