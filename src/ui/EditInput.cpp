#include "ui/EditInput.h"

#include "core/ground/LogicClock.h"
#include "text/TextEditing.h"
#include "ui/Shortcuts.h"

#include <Kobaltrix/KXClipboard.h>
#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

int _KXClicks::press() {
    constexpr std::uint32_t quick = 500; // milliseconds
    constexpr int near = 4;              // points
    const bool again = count > 0 && _KXLogicCurrentTime - _time <= quick && std::abs(KXMouseX - _x) <= near &&
                       std::abs(KXMouseY - _y) <= near;
    count = again ? count % 3 + 1 : 1;
    _time = _KXLogicCurrentTime;
    _x = KXMouseX;
    _y = KXMouseY;
    return count;
}

void _KXBlink::begin() { _time = _KXLogicCurrentTime; }

bool _KXBlink::isOn(std::uint64_t revision) {
    constexpr std::uint32_t halfPeriod = 500; // milliseconds
    if (_revision != revision)
        begin();
    _revision = revision;
    return (_KXLogicCurrentTime - _time) / halfPeriod % 2 == 0;
}

bool _KXIsEditKey(int key, const _KXModifiers& modifiers) {
    static constexpr int moving[] = {KXKeyLeft, KXKeyRight,  KXKeyUp,       KXKeyDown,      KXKeyHome,
                                     KXKeyEnd,  KXKeyPageUp, KXKeyPageDown, KXKeyBackspace, KXKeyDelete};
    static constexpr int letters[] = {KXKeyA, KXKeyC, KXKeyV, KXKeyX, KXKeyY, KXKeyZ};
    const auto isIn = [key](const auto& keys) { return std::ranges::find(keys, key) != std::end(keys); };
    return isIn(moving) || (_KXIsShortcut(modifiers) && isIn(letters));
}

bool _KXUseEditShortcut(_KXTextEditing& edit, const KXInputEvent& event, const _KXModifiers& modifiers,
                        bool isReadOnly) {
    const int key = event.key;
    const bool isUndo = key == KXKeyZ || key == KXKeyY; // which repeat
    if (!_KXIsShortcut(modifiers) || (event.type != KXInputEventKeyDown && !isUndo))
        return false;
    if (key == KXKeyA)
        edit.selectAll();
    if ((key == KXKeyC || key == KXKeyX) && !edit.isSecret() && edit.hasSelection() &&
        KXSetClipboardText(edit.selectedText().c_str()))
        return key == KXKeyX && !isReadOnly && edit.erase(_KXCursorStep::Left);
    if (isReadOnly)
        return false;
    if (isUndo)
        return key == KXKeyY || modifiers.shift ? edit.redo() : edit.undo();
    return key == KXKeyV && edit.insert(KXClipboardText());
}
