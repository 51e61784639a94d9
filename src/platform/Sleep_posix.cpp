#include "platform/Sleep.h"

#include <unistd.h>

void _KXSleepBriefly() { usleep(0); }
