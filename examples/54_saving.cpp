// A game that remembers: its settings, the best scores and where the player was, in files that people can
// read. Each start goes on where the last one left off; what is drawn is what the files hold.
#include "example.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

// What is broken was put aside, and the game begins anew.
static void load(KXSettings& file, const char* name) {
    if (file.load(KXUserPath(name)) >= KXSettingsBroken)
        std::fprintf(stderr, "%s\n", KXError());
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    KXSetGameName("Kobaltrix", "saving"); // ~/.local/share/Kobaltrix/saving
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Saving", {400, 240});
        KXFont& font = *KXCachedFont(example.font(), KXAliasModeTexture, 14);
        KXSettings settings, saved, scores;
        load(settings, "settings.txt");
        load(saved, "saves/1.txt");
        load(scores, "scores.txt");

        const float speed = settings.number("speed", 12, 1, 20); // may be edited by hand, within limits
        const std::string name = settings.text("name", "Keeper");
        KXPoint at = saved.point("at", {40, 120});
        int steps = saved.integer("steps", 0, 0);
        std::vector<double> best = scores.numbers("best");

        KXRandomGenerator dice(7);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                at.x += speed * dice.range(0.2f, 1.8f);
                ++steps;
                if (at.x > 380) { // the end of a round
                    best.push_back(steps);
                    std::sort(best.begin(), best.end(), std::less<>());
                    best.resize(std::min<std::size_t>(best.size(), 5));
                    scores.setNumbers("best", best);
                    scores.save();
                    at.x = 40;
                    steps = 0;
                }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXDrawRectFill({{20, 112}, {360, 16}}, dusk);
            KXDrawCircleFill(at, 12, 24, gold);
            font.print({20, 50}, paper, "%s, %d steps on the way", name.c_str(), steps);
            for (std::size_t i = 0; i < best.size(); ++i)
                font.print({20 + 70.0f * i, 170}, teal, "%zu.  %.0f", i + 1, best[i]);
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }

        settings.setNumber("speed", speed);
        settings.setText("name", name.c_str());
        settings.save();
        saved.setPoint("at", at);
        saved.setNumber("steps", steps);
        if (!saved.save())
            std::fprintf(stderr, "%s\n", KXError());
    }
    KXDeInit();
    return 0;
}
