// A menu with a sub-menu and shortcuts, and a dialog box that asks before leaving.
#include "example.h"

struct Scene {
    KXColor sky = night;
    bool stars = true;
    std::unique_ptr<KXUIDialogBox> dialog; // a new one for each question
};

static void ask(void* context) {
    auto dialog = std::make_unique<KXUIDialogBox>();
    dialog->setPadding(12);
    dialog->setBackgroundColor(dusk.r, dusk.g, dusk.b, 1);
    dialog->setBorderColor(gold.r, gold.g, gold.b, 1);
    dialog->setTextColor(gold.r, gold.g, gold.b, 1);
    dialog->setMessage("Leave so soon?");
    dialog->addButton("Stay");
    dialog->addButton("Leave");
    dialog->setRect({170, 120}, {200, 80}); // the box, then its buttons where they look best
    dialog->button(0)->setRect({184, 158}, {82, 28});
    dialog->button(1)->setRect({274, 158}, {82, 28});
    static_cast<Scene*>(context)->dialog = std::move(dialog);
}

// What the menu's other entries call; each is handed the scene.
static void nightFalls(void* scene) { static_cast<Scene*>(scene)->sky = night; }
static void sunSets(void* scene) { static_cast<Scene*>(scene)->sky = KXMakeColori(112, 72, 110, 255); }
static void dayBreaks(void* scene) { static_cast<Scene*>(scene)->sky = teal; }
static void turnStars(void* scene) { static_cast<Scene*>(scene)->stars = !static_cast<Scene*>(scene)->stars; }

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A menu and a dialog", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXSetUIColor(teal, dusk, teal, teal, gold, paper); // what widgets take over when they are made
        Scene scene;
        KXUIMenu menu("Scene");
        menu.setOrigin({12, 12});
        KXUIMenu* sky = new KXUIMenu("Sky"); // from new: it belongs to the menu from now on
        menu.addSubMenu(sky);
        sky->addMenuItemWithName("Night", nightFalls, &scene);
        sky->addMenuItemWithName("Dusk", sunSets, &scene);
        sky->addMenuItemWithName("Day", dayBreaks, &scene);
        menu.addMenuItemWithName("Stars", turnStars, &scene, 0, 19); // and the key S
        menu.addDivider();
        menu.addMenuItemWithName("Leave", ask, &scene, 0, 17); // and the key Q
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                menu.poll();
                if (scene.dialog) {
                    scene.dialog->poll();
                    if (scene.dialog->buttonIndexClicked() == 1)
                        KXApplicationRequestQuit();
                    else if (scene.dialog->buttonIndexClicked() == 0)
                        scene.dialog.reset();
                }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXDrawRectFill({{0, 0}, window.size()}, scene.sky);
            for (int i = 0; scene.stars && i < 60; ++i)
                KXDrawRectFill({{i * 137 % 400 + 0.0f, i * 53 % 200 + 0.0f}, {i % 5 ? 1.0f : 2.0f, 1}}, paper);
            KXDrawCircleFill({330, 60}, 26, 64, gold);
            KXDrawTriangleFill({-40, 250}, {110, 150}, {260, 250}, dusk);
            KXDrawTriangleFill({150, 250}, {320, 170}, {480, 250}, dusk);
            if (scene.dialog)
                scene.dialog->draw();
            menu.draw(); // last: it may lie above everything
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
        }
    }
    KXDeInit();
    return 0;
}
