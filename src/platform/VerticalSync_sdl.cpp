#include "platform/VerticalSync.h"

#include <SDL_video.h>

bool _KXSetVerticalSync(int interval) { return SDL_GL_SetSwapInterval(interval) == 0; }

int _KXVerticalSync() { return SDL_GL_GetSwapInterval(); }
