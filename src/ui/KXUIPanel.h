#pragma once

#include "ui/Focus.h"
#include "ui/Theme.h"

#include <Kobaltrix/KXUIPanel.h>

#include <cstdint>
#include <memory>
#include <vector>

struct _KXUIPanelParts;

/// The keyboard for a widget that has no part of its own for it.
struct _KXPanelStop final : _KXFocus {
    _KXPanelStop(_KXUIPanelParts& in, _KXUIWidget& of) : parts(in), widget(of) {}
    bool takesText() const override { return false; }
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardClick(const KXInputEvent& event, const _KXModifiers& modifiers);
    bool isForWidget(const KXInputEvent& event);

    _KXUIPanelParts& parts;
    _KXUIWidget& widget;
    bool isRemoved = false;      // from the panel, while it may still be hearing
    unsigned pressed = 0;        // the buttons that went down over it, a bit for each
    std::uint64_t pressStep = 0; // one more than that in which it was pressed last
};

struct _KXPanelChild {
    _KXUIWidget* widget;
    std::unique_ptr<_KXPanelStop> stop;
    bool isFixed = false; ///< It does not scroll with the others, and lies above them.

    _KXFocus* focus() const {
        _KXFocus* const own = widget->keyboardPart();
        return own ? own : stop.get();
    }
};

struct _KXPanelMnemonic {
    int key;
    _KXUIWidget* widget;
};

/// It hears the mouse before its widgets do, and says event by event which of them lies on top; and keys that
/// are for no widget or for no single one.
struct _KXUIPanelParts : _KXFocus, _KXFocus::KeyFilter {
    explicit _KXUIPanelParts(KXUIPanel& of) : panel(&of) {}

    KXUIPanel* panel; // null once it has ended
    std::vector<_KXPanelChild> children;
    std::vector<std::unique_ptr<_KXPanelStop>>
        removed; // since the last poll, maybe by what they were hearing
    std::vector<_KXPanelMnemonic> mnemonics;
    _KXUIWidget *defaultButton = nullptr, *cancelButton = nullptr;
    _KXUIWidget* holder = nullptr; // that a press of the mouse began on which lasts
    KXUILayout* layout = nullptr;
    KXUIColors colors = KXCurrentUIColors();
    unsigned themeRevision = _KXThemeRevision;
    bool hasBackground = false;
    int polls = 0; // that are under way

    const _KXPanelChild* childOf(const _KXUIWidget& widget) const;
    _KXUIWidget* topAt(KXPoint point) const;
    /// Where alone a widget is to be seen; null for everywhere, as while it is pressed or has something open.
    const KXRect* viewOf(const _KXPanelChild& child) const;
    void claimRestingPointer();
    void leaveOutWidgets();
    void place();
    /// Places the layout, if there is one.
    virtual void placeLayout();
    /// Where the widgets are to be seen that are not fixed; null for everywhere.
    virtual const KXRect* view() const { return nullptr; }
    /// The wheel was turned over a widget, or over none, that does nothing by it.
    virtual void heardFreeWheel(const KXInputEvent&) {}

    bool keepsKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    bool usesMnemonic(int key);
    bool clickByReturn();
    bool clickByEscape();

protected:
    bool takesText() const override { return false; }
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKeyOfNobody(const KXInputEvent& key, const _KXModifiers& modifiers) override;
};
