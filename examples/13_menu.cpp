// A menu with a sub-menu, a divider and shortcuts.
#include "example.h"

struct Scene {
    KXColor sky;
    bool stars;
};

// What the entries call; each is handed what it was added with, here the scene.
static void fallNight(void* scene) { static_cast<Scene*>(scene)->sky = night; }
static void setSun(void* scene) { static_cast<Scene*>(scene)->sky = KXMakeColori(112, 72, 110, 255); }
static void turnStars(void* scene) { static_cast<Scene*>(scene)->stars ^= true; }
static void leave(void*) { KXApplicationRequestQuit(); }

// Entries take the colours over that their menu has when they are added.
static void paint(KXUIMenu& menu) {
    menu.setBackgroundNormalColor(dusk.r, dusk.g, dusk.b, 1);
    menu.setBackgroundHoverColor(teal.r, teal.g, teal.b, 1);
    menu.setBackgroundOpenColor(teal.r, teal.g, teal.b, 1);
    menu.setBorderColor(teal.r, teal.g, teal.b, 1);
    menu.setTextColor(paper.r, paper.g, paper.b, 1);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A menu", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 14, KXZeroPoint);
        Scene scene = {night, true};
        KXUIMenu menu("Scene");
        menu.setOrigin({16, 16});
        paint(menu);
        KXUIMenu* sky = new KXUIMenu("Sky"); // from new: it belongs to the menu from now on
        paint(*sky);
        menu.addSubMenu(sky);
        sky->addMenuItemWithName("Night", fallNight, &scene);
        sky->addMenuItemWithName("Dusk", setSun, &scene);
        menu.addMenuItemWithName("Stars", turnStars, &scene, KXKeyNone, KXKeyS); // and by that key
        menu.addDivider();
        menu.addMenuItemWithName("Leave", leave, nullptr, KXKeyNone, KXKeyQ);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                menu.poll(); // calls what was chosen
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(scene.sky);
            for (int i = 0; scene.stars && i < 60; ++i)
                KXDrawRectFill({{i * 137 % 400 + 0.0f, i * 53 % 200 + 0.0f}, {i % 5 ? 1.0f : 2.0f, 1}},
                               paper);
            KXDrawCircleFill({300, 90}, 34, 64, gold);
            KXDrawTriangleFill({-40, 250}, {110, 150}, {260, 250}, dusk);
            KXDrawTriangleFill({150, 250}, {320, 170}, {480, 250}, dusk);
            menu.draw(); // last: an open menu lies above everything
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
