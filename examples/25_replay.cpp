// A flight that is recorded and replayed: R records, steer with the arrow keys, E ends, P plays it again. In
// the file stand the keys, step by step. To record whole runs a game needs none of this: start any program
// with KOBALTRIX_RECORD=FILE, and then with KOBALTRIX_REPLAY=FILE.
#include "example.h"

#include <vector>

namespace {
const char* const recording = "flight.txt";

/// All that the flight depends on; recording and replay begin with the same.
struct Flight {
    KXPoint at = {60, 160};
    KXPoint speed = {1.2f, 0};
    KXRandomGenerator gusts{7};
    std::vector<KXPoint> trail;

    void step() {
        speed.x += 0.08f * ((KXKeyHeld(KXKeyRight) ? 1 : 0) - (KXKeyHeld(KXKeyLeft) ? 1 : 0));
        speed.y += 0.08f * ((KXKeyHeld(KXKeyDown) ? 1 : 0) - (KXKeyHeld(KXKeyUp) ? 1 : 0));
        at.x += speed.x + gusts.range(-0.8f, 0.8f);
        at.y += speed.y + gusts.range(-0.8f, 0.8f);
        trail.push_back(at);
    }
};

const char* whatIsUnderWay() {
    switch (KXRecordingStateNow()) {
    case KXRecordingRecords:
        return "recording: E ends it";
    case KXRecordingReplays:
        return "replay";
    case KXRecordingReplayed:
        return "replayed: R records another one";
    case KXRecordingApart:
        return KXError();
    default:
        return "R records, P replays";
    }
}
} // namespace

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Replay", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXTexture fish(example.file("fish.png"));
        Flight flight;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                const bool records = KXRecordingStateNow() == KXRecordingRecords;
                if (records && KXKeyWentDown(KXKeyE))
                    KXEndRecording();
                else if (KXKeyWentDown(KXKeyR) && KXBeginRecording(recording))
                    flight = Flight();
                else if (KXKeyWentDown(KXKeyP) && KXBeginReplay(recording))
                    flight = Flight();
                else
                    flight.step();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            for (std::size_t i = 1; i < flight.trail.size(); ++i)
                KXDrawLine(flight.trail[i - 1], flight.trail[i], teal);
            fish.draw(static_cast<int>(flight.at.x) - 16, static_cast<int>(flight.at.y) - 16, 0);
            KXUIGlobalFontPrint({12, 10}, paper, whatIsUnderWay());
            KXUIGlobalFontPrint({12, 30}, gold, KXTempString("%d steps", int(KXRecordingSteps())));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
