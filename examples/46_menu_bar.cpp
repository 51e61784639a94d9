// An editor's menu bar with shortcuts, marks and a sub-menu, and a menu at the pointer.
#include "example.h"

enum Command { New = 1, Open, Recent, Quit, Undo, Paint, Erase, Grid, Small, Large, FirstRecent = 100 };

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A menu bar", {400, 250});
        KXUISetTheme(KXUIDarkTheme());
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXTexture tiles(example.file("tiles.png"));

        KXUIMenuBar bar;
        bar.addMenu("&File", {{"&New", New, {KXKeyN, KXUICommand}},
                              {"&Open...", Open, {KXKeyO, KXUICommand}},
                              {"Open &recent", Recent},
                              {}, // a line
                              {"&Quit", Quit, {KXKeyQ, KXUICommand}}});
        bar.addSubMenu(Recent, {{"meadow.lvl", FirstRecent}, {"cave.lvl", FirstRecent + 1}});
        bar.addMenu("&Edit", {{"&Undo", Undo, {KXKeyZ, KXUICommand}}});
        bar.addMenu("&View", {{"&Grid", Grid, {KXKeyG}, KXUIMenuEntryCheck, -1},
                              {},
                              {"&Small tiles", Small, {}, KXUIMenuEntryRadio},
                              {"&Large tiles", Large, {}, KXUIMenuEntryRadio, -1}});
        bar.setSize({400, -1});
        bar.setEntryEnabled(Undo, 0); // there is nothing yet

        KXUIMenuEntry paint = {"&Paint", Paint}, erase = {"&Erase", Erase, {KXKeyDelete}};
        paint.icon = &tiles;
        paint.iconSource = {{0, 0}, {16, 16}};
        KXUIContextMenu context;
        context.add({paint, erase});

        bool painted[16][25] = {};
        const auto paintAt = [&](KXPoint point, bool on) {
            const float side = bar.isEntryChecked(Large) ? 32 : 16;
            const int row = int((point.y - bar.rect().size.height) / side), column = int(point.x / side);
            if (row >= 0 && row < 16 && column >= 0 && column < 25)
                painted[row][column] = on;
        };
        KXPoint clicked = {0, 0};
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                while (bar.poll())
                    if (bar.chosen() == Quit)
                        KXApplicationRequestQuit();
                    else if (bar.chosen() == New)
                        std::memset(painted, 0, sizeof painted);
                if (context.poll())
                    paintAt(clicked, context.chosen() == Paint);
                if (!bar.isOpen() && !context.isOpen() && KXMouseWentUp(KXMouseRight))
                    context.open(clicked = KXMousePoint);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            const float side = bar.isEntryChecked(Large) ? 32 : 16, top = bar.rect().size.height;
            for (int i = 0; i < 16 * 25; ++i) {
                const KXRect cell = {{i % 25 * side, top + i / 25 * side}, {side, side}};
                KXDrawRectFill(cell, painted[i / 25][i % 25] ? leaf : (i % 25 + i / 25) % 2 ? night : dusk);
                if (bar.isEntryChecked(Grid))
                    KXDrawRect(cell, withAlpha(teal, 0.4f));
            }
            context.draw();
            bar.draw(); // last: what is open lies above everything
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
