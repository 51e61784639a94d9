#pragma once

class _KXUIWidget;

// Whose tooltip it is: that of the widget which was drawn last under the pointer.

/// A widget is drawn, over whatever was drawn before.
void _KXTooltipOwnerIsDrawn(_KXUIWidget& widget);
/// A widget ends.
void _KXForgetTooltipOwner(const _KXUIWidget* widget);
