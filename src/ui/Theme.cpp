#include "ui/Theme.h"

void KXUISetTheme(const KXUITheme& theme) { _KXTheme = theme; }

KXUITheme KXUICurrentTheme() { return _KXTheme; }
