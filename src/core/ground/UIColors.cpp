#include "core/ground/UIColors.h"

void KXSetUIColor(KXColor border, KXColor background, KXColor backgroundInteraction, KXColor selection,
                  KXColor focus, KXColor text) {
    _KXUIBorderColor = border;
    _KXUIBackroundColor = background;
    _KXUIBackgroundColor_Interaction = backgroundInteraction;
    _KXUISelectionColor = selection;
    _KXUIFocusColor = focus;
    _KXUITextColor = text;
}

KXUIColors KXCurrentUIColors() {
    return {_KXUIBorderColor,    _KXUIBackroundColor, _KXUIBackgroundColor_Interaction,
            _KXUISelectionColor, _KXUIFocusColor,     _KXUITextColor};
}
