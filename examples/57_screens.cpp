// Screens, each with a step and a drawing. Return goes on to another one, which comes in over the one before.
#include "example.h"

#include <utility>

struct Screen {
    virtual ~Screen() = default;
    virtual std::unique_ptr<Screen> step() = 0; // the one to go on with, null to stay
    virtual void draw(KXSize size) = 0;
};

struct Night : Screen {
    explicit Night(int number) : _number(number) {}

    std::unique_ptr<Screen> step() override {
        _moon.step();
        return KXKeyWentDown(KXKeyReturn) ? std::make_unique<Night>(_number + 1) : nullptr;
    }
    void draw(KXSize size) override {
        KXDrawRectFill({{0, 0}, size}, _number % 2 ? teal : rose);
        KXDrawCircleFill(KXLerp({60, 170}, {size.width - 90, 60}, _moon.value()), 26, 48, gold);
        KXUIGlobalFontPrint({20, 205}, paper, KXTempString("Night %d. Return goes on.", _number));
    }

    int _number;
    KXTween _moon{{.seconds = 4, .ease = KXEaseOutQuadratic}}; // a new screen begins anew
};

class Screens {
public:
    explicit Screens(std::unique_ptr<Screen> first) : _now(std::move(first)) { _way.finish(); }

    void step() {
        _way.step();
        if (auto next = _way.done() ? _now->step() : nullptr) { // nobody is played while they move
            _before = std::exchange(_now, std::move(next));
            _way.restart();
        }
    }
    void draw(KXSize size) {
        for (Screen* screen : {_before.get(), _now.get()}) {
            KXCamera camera; // moves all that it draws aside
            camera.centre = {size.width * (_way.value() - (screen == _now.get()) + 0.5f), size.height / 2};
            KXPushCamera(camera);
            if (screen)
                screen->draw(size);
            KXPopCamera();
        }
    }

private:
    std::unique_ptr<Screen> _before, _now;
    KXTween _way{{.seconds = 0.6f, .ease = KXEaseInOutCubic}};
};

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Screens", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 14, KXZeroPoint);
        Screens screens(std::make_unique<Night>(1));
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                screens.step();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            screens.draw(window.size());
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
