#pragma once

#include <SDL_opengl.h>

#include <initializer_list>

/// Tightly packed rows for uploads and read-backs while the scope lasts, whatever the game has set.
class _KXTightPixelStore {
public:
    _KXTightPixelStore() {
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum parameter :
             {GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS, GL_PACK_SWAP_BYTES,
              GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SWAP_BYTES})
            glPixelStorei(parameter, 0);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    }
    ~_KXTightPixelStore() { glPopClientAttrib(); }
    _KXTightPixelStore(const _KXTightPixelStore&) = delete;
    _KXTightPixelStore& operator=(const _KXTightPixelStore&) = delete;
};
