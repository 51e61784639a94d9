// A viewer of pictures: a button opens the file browser, which shows what is selected before it is chosen.
// The game's own place stands beside those of the user.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Files", {540, 300});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, dusk, teal, teal, gold, paper);

        KXUIButton open;
        open.setText("Open a picture");
        open.setOrigin({16, 16});

        KXUIFileBrowser browser;
        browser.setRect({8, 8}, {524, 284});
        browser.setBackgroundColor(night);
        browser.setTrackColor(night);
        browser.setKnobColor(teal);
        browser.setExtensions("png");
        browser.setAllowsChanges(0); // a viewer changes no file
        browser.addPlace("Examples", example.file(""));

        std::unique_ptr<KXTexture> picture;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                if (browser.poll() && browser.path()) { // chosen, not cancelled
                    const KXImage image(browser.path());
                    if (image.width() > 0)
                        picture = std::make_unique<KXTexture>(image);
                }
                if (!browser.isShown() && open.clicked(KXMouseLeft))
                    browser.show(KXUIFileBrowserModeOpen, example.file(""));
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            open.draw();
            if (picture) {
                KXDrawOptions options;
                options.position = {(540 - picture->size().width) / 2, (300 - picture->size().height) / 2};
                picture->draw(options);
            }
            browser.draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
