#include "input/WidgetKeys.h"

#include "core/ground/LogicClock.h"
#include "input/Keyboard.h"

void _KXWidgetKeys::begin() {
    _repeatingKey = 0;
    for (int key = 0; key < _KXKeyCount; ++key)
        if (_KXKeys[key])
            _KXKeysTextEntryDown[key] = -1;
}

bool _KXWidgetKeys::reports(int key, bool repeats) {
    if (_KXKeyTextEntry(key, -1)) {
        _repeatingKey = key;
        _repeatTime = static_cast<std::int32_t>(_KXLogicCurrentTime);
        return true;
    }
    return repeats && key == _repeatingKey && _KXKeyTextEntry(key, 0) && _KXRepeatIsDue(_repeatTime);
}
