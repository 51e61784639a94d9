// What a person does in a real window, replayed where there is no display: the same pictures.

#include <Kobaltrix/Kobaltrix.h>

#include "support/Program.h"

#include <gtest/gtest.h>

#include <SDL_stdinc.h>
#include <SDL_timer.h>

#include <cstdlib>
#include <vector>

namespace {
/// Something to type into, to click, to drag and to resize; Escape ends it. Its pictures are all compared.
void play() {
    KXWindow window("To be replayed", {200, 150}, 1);
    window.setRenderContext();
    KXUISetGlobalFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", KXAliasModeTexture, 12, {0, 2});
    KXUITextEntry entry;
    entry.setRect({10, 10}, {120, 22});
    KXUISlider slider;
    slider.setSize({100, 16});
    slider.setOrigin({10, 50});
    std::vector<KXPoint> clicks;
    bool ends = false;
    for (const Uint64 end = SDL_GetTicks64() + 30000; !ends && SDL_GetTicks64() < end;) {
        KXPreLogicLoop();
        for (; KXLogicLoop(); KXLogicUpdate()) {
            entry.poll();
            slider.poll();
            for (const KXInputEvent& event : KXInputEvents())
                if (event.type == KXInputEventMouseDown)
                    clicks.push_back(event.point);
            ends = ends || KXKeyWentDown(KXKeyEscape);
        }
        window.setRenderContext();
        KXDrawRectFill({{0, 0}, window.size()}, KXBlueColor);
        KXDrawRectFill({{window.size().width - 20, window.size().height - 20}, {10, 10}}, KXGreenColor);
        for (const KXPoint click : clicks)
            KXDrawCircleFill(click, 4, 12, KXRedColor);
        entry.draw();
        slider.draw();
        window.swapBuffers();
        KXPostLogicLoop();
        KXWaitForLogicStep();
    }
    EXPECT_TRUE(ends);
}

TEST(DesktopReplay, OfAPersonIsTheSameWithoutADisplay) {
    SDL_setenv("KOBALTRIX_RECORD_PIXELS", "1", 1);
    ASSERT_EQ(KXInit(), -1);
    if (const char* const recording = std::getenv("REPLAY_OF")) {
        ASSERT_EQ(KXBeginReplay(recording), -1) << KXError();
        play();
        EXPECT_EQ(KXRecordingStateNow(), KXRecordingReplays) << KXError();
    } else {
        const TemporaryFolder folder;
        const std::string file = folder / "person.txt";
        ASSERT_EQ(KXBeginRecording(file.c_str()), -1);
        folder.write("person.sh", "set -e\n"
                                  "W=$(xdotool search --sync --onlyvisible --name 'To be replayed')\n"
                                  "at() { xdotool mousemove --window $W $1 $2; }\n"
                                  "xdotool windowmove $W 50 40 windowfocus $W\n"
                                  "sleep 0.5\n"
                                  "at 30 20; xdotool click 1 type --delay 30 Hullo\n"
                                  "at 15 58; xdotool mousedown 1; at 60 60; at 80 60; xdotool mouseup 1\n"
                                  "xdotool windowsize $W 320 260; sleep 0.5\n"
                                  "at 300 240; xdotool click 1 click 3\n"
                                  "sleep 0.5\n"
                                  "xdotool key Escape\n");
        Program person(folder, "timeout 25 sh person.sh");
        play();
        KXEndRecording();
        EXPECT_EQ(person.finish().status, 0);
        const std::string text = contentOf(file);
        // Pictures are compared before and behind the new size.
        EXPECT_NE(text.find("\npixels "), std::string::npos);
        EXPECT_GT(text.rfind("\npixels "), text.find(" 320 260\n") + 1000);
        for (const char* line : {"\ntext ", "\nmouse-down ", " 320 260\n"})
            EXPECT_NE(text.find(line), std::string::npos) << line;
        const Outcome replay =
            runProgram(folder, "REPLAY_OF=person.txt SDL_VIDEODRIVER=offscreen '" SELF "'");
        EXPECT_EQ(replay.status, 0) << replay.output;
    }
    KXDeInit();
}
} // namespace
