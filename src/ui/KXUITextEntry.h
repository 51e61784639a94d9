#pragma once

#include "input/KXMouse.h"
#include "text/TextEdit.h"
#include "text/TextView.h"
#include "ui/EditInput.h"
#include "ui/Focus.h"

#include <Kobaltrix/KXUITextEntry.h>

#include <cstdint>
#include <string>

/// What an entry's header does not show.
struct _KXTextEntryEditor : _KXFocus {
    explicit _KXTextEntryEditor(KXUITextEntry& edited) : entry(edited) { leavesReturn = true; }

    KXUITextEntry& entry;
    _KXTextEdit edit;
    std::string placeholder;
    // What an input method composes, and the text with it in place, which is shown meanwhile.
    std::string composition;
    _KXTextEdit composed;
    _KXTextView view;

    bool changed = false, entered = false; // by what no poll has told of yet

    _KXClicks clicks;
    int dragX = 0;
    std::size_t pressPosition = 0;
    _KXBlink blink;

    const _KXTextEdit& shown() const { return composition.empty() ? edit : composed; }
    void compose(std::string text);
    bool isSecret() const override { return edit.isSecret(); }
    bool needsKey(int key, const _KXModifiers& modifiers) const override;

protected:
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void heardText(const char* text) override { changed |= edit.type(text); }
    void heardComposition(const char* text) override { compose(text); }
    void keyboardTaken() override;
    void keyboardLost() override { compose({}); }
    void tabArrived() override { edit.selectAll(); }

private:
    void passOn(int key, const _KXModifiers& modifiers);
};
