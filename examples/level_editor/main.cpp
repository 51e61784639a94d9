// A level editor: what the widgets are for. Menus, tools, layers, undo and files, all by keyboard too, in a window
// that may have any size. Start it with a level (.tmj) that lies beside tiles.tsj, or without one.
#include "Editor.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (!KXInit(argv[0])) {
        std::fprintf(stderr, "%s\n", KXError());
        return 1;
    }
    {
        KXWindow window("Level editor", {720, 460}, -1);
        const char* const font = KXFindFont("DejaVu Sans");
        KXUISetGlobalFont(font ? font : "", KXAliasModeTexture, 12, KXZeroPoint);
        KXUITheme theme = KXUIDarkTheme();
        theme.padding = {6, 4};
        KXUISetTheme(theme); // before the widgets, which fit their texts
        Editor editor(argc > 1 ? argv[1] : nullptr);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                editor.poll();
                KXLogicUpdate();
            }
            window.setRenderContext();
            KXClear(KXBlackColor);
            editor.draw(window.size());
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
