// Sounds and music: a small piano, played with the keys A S D F G H J K or the mouse. M halts the music.
#include "example.h"
#include "wave.h"

const double frequencies[] = {261.6, 293.7, 329.6, 349.2, 392.0, 440.0, 493.9, 523.3}; // C to C
const int keys[] = {KXKeyA, KXKeyS, KXKeyD, KXKeyF, KXKeyG, KXKeyH, KXKeyJ, KXKeyK};

static KXRect keyRect(int i) { return {{40 + 40.0f * i, 130}, {38, 96}}; }

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    if (!KXInitAudioOrSilence()) // before any sound is loaded; without a device nothing is heard
        return example.failed();
    {
        KXWindow window("Sound and music", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        const KXColor colors[] = {gold, rose, teal, leaf};
        std::unique_ptr<KXSound> sounds[8];
        for (int i = 0; i < 8; ++i)
            sounds[i] = std::make_unique<KXSound>(
                writeWave(example.file(KXTempString("note%d.wav", i)), {frequencies[i]}, 1.2).c_str());
        KXMusic music(
            writeWave(example.file("music.wav"), {131, 0, 196, 165, 110, 0, 165, 131}, 0.6).c_str());
        music.setVolume(50); // of 128
        music.play(-1);      // for ever
        bool halted = false;
        float glow[8] = {};
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                const int clicked = KXMouseWentDown(KXMouseLeft);
                for (int i = 0; i < 8; ++i) {
                    const KXRect key = keyRect(i);
                    const bool hit = KXMousePoint.x >= key.origin.x && KXMousePoint.x < key.origin.x + 38 &&
                                     KXMousePoint.y >= key.origin.y && KXMousePoint.y < key.origin.y + 96;
                    glow[i] = KXMaxf(0, glow[i] - 0.012f);
                    if (!KXKeyWentDown(keys[i]) && !(clicked && hit))
                        continue;
                    if (sounds[i]->play(0)) // once; false if all 8 channels are busy
                        sounds[i]->setPanning(255 - 30 * i, 45 + 30 * i); // low notes left, high ones right
                    glow[i] = 1;
                }
                if (KXKeyWentDown(KXKeyM)) {
                    halted = !halted;
                    halted ? music.pause() : music.resume();
                }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXUIGlobalFontPrint({40, 16}, paper, halted ? "M: music on" : "M: music off");
            KXDrawRectFill({{32, 122}, {334, 112}}, dusk);
            for (int i = 0; i < 8; ++i) {
                const KXRect key = keyRect(i);
                KXDrawRectFill(key, paper);
                KXDrawRectFill(key, withAlpha(colors[i % 4], glow[i]));
                KXUIGlobalFontPrint({key.origin.x + 14, 204}, night, KXKeyToString(keys[i]));
                if (glow[i] > 0) // the note rises
                    KXDrawCircleFill({key.origin.x + 19, 30 + 90 * glow[i]}, 12, 32,
                                     withAlpha(colors[i % 4], glow[i]));
            }
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
