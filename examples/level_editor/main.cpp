// A level editor: what the widgets are for. Menus, tools, layers, undo and files, all by keyboard too, in a
// window of any size. Start it with a level (.tmj) that lies beside tiles.tsj, or without one.
#include "../example.h"
#include "Editor.h"

int main(int argc, char** argv) {
    const char* const path = argc % 2 == 0 ? argv[argc - 1] : nullptr;
    Example example(path ? argc - 1 : argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Level editor", {720, 460}, -1);
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXUITheme theme = KXUIDarkTheme();
        theme.padding = {6, 4};
        KXUISetTheme(theme); // before the widgets, which fit their texts
        Editor editor(path);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                editor.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            editor.draw(window.size());
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
