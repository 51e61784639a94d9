#include "platform/Terminal.h"

// Whoever starts a program hands it on.
void _KXUseTerminal() {}
