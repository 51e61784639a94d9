#include "render/View.h"

#include <SDL_opengl.h>

_KXView _KXView::now() {
    GLfloat projection[16], model[16], both[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    glGetFloatv(GL_MODELVIEW_MATRIX, model);
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            for (int i = 0; i < 4; ++i)
                both[4 * column + row] += projection[4 * i + row] * model[4 * column + i];
    _KXView view;
    const bool isTurned = both[1] != 0 || both[4] != 0, isFlat = both[3] == 0 && both[7] == 0;
    if (!isTurned && isFlat && both[15] == 1) {
        view._xScale = both[0];
        view._x = both[12];
        view._yScale = both[5];
        view._y = both[13];
    }
    return view;
}
