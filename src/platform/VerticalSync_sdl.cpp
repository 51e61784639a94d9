#include "platform/VerticalSync.h"

#include <SDL_video.h>

void _KXEnableVerticalSync() { SDL_GL_SetSwapInterval(1); }
