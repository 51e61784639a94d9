// Sounds made in code. A bat is heard where it flies, no two steps sound the same, day and night are pieces
// of music that fade into each other, and each group has a volume. Space: a step, N: day or night, P: pause.
#include "example.h"

#include <cmath>
#include <vector>

/// Notes of @a seconds each, in Hertz; 0 is a rest.
static std::unique_ptr<KXSound> soundOf(const std::vector<float>& notes, float seconds, float loudness) {
    std::vector<float> values;
    for (const float note : notes)
        for (float t = 0; t < seconds; t += 1 / 44100.0f) {
            const float dying = std::exp(-3 * t / seconds) * std::fmin(1, 400 * t);
            values.push_back(loudness * dying * (1 - t / seconds) * std::sin(6.283185f * note * t));
        }
    KXSamples samples;
    samples.values = values.data();
    samples.frames = values.size();
    return std::make_unique<KXSound>(samples);
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]) || !KXInitAudioOrSilence())
        return example.failed();
    {
        KXWindow window("Sound positions", {400, 250}, -1);
        KXUISetTheme(KXUIDarkTheme());
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        const auto wings = soundOf({140, 0, 120, 0}, 0.06f, 0.6f), step = soundOf({90}, 0.1f, 0.8f);
        const auto day = soundOf({262, 330, 392, 330, 349, 440, 392, 330}, 0.4f, 0.2f);
        const auto dark = soundOf({131, 0, 156, 0, 147, 0, 117, 0}, 0.4f, 0.3f);
        KXSoundOptions forEver, music;
        forEver.loops = music.loops = -1;
        music.group = KXSoundGroupMusic;
        KXVoice song = day->start(music), bat = wings->startAt({0, 0}, forEver);
        music.fadeInMilliseconds = 2000;
        KXUINumberSlider volume; // from 0 to 1, as volumes are
        volume.setRect({262, 216}, {126, 18});
        volume.setNumber(0.6);
        KXRandomGenerator dice(7);
        KXSetSoundView({{{100, 40}, {200, 150}}, 0.9f, 120}); // what is seen, and how far beyond it is heard
        bool isDay = true;
        float time = 0, walked = 0;
        KXPoint at = {0, 0};
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                volume.poll();
                KXSetGroupVolume(KXSoundGroupMusic, float(volume.number()));
                if (KXKeyWentDown(KXKeyN)) { // one goes while the other comes
                    song.stop(2000);
                    song = ((isDay = !isDay) ? day : dark)->start(music);
                }
                KXSoundOptions steps;
                steps.pitch = dice.range(0.8f, 1.2f);
                if (KXKeyWentDown(KXKeySpace) && step->startAt({110 + walked, 180}, steps).isPlaying())
                    walked = walked < 170 ? walked + 14 : 0;
                time += 0.025f;
                at = {200 + 190 * std::sin(time), 90 + 60 * std::sin(2.3f * time)};
                bat.setPlace(at);
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(isDay ? dusk : night);
            KXDrawRectFill({{100, 40}, {200, 150}}, withAlpha(teal, 0.3f)); // the view
            KXDrawEllipse({115 + walked, 176}, {6, 10}, KXShapePaint(gold));
            for (const float ring : {1.0f, 2.0f, 3.0f})
                KXDrawEllipse(at, {12 * ring, 12 * ring}, KXShapePaint(withAlpha(rose, 0.2f)));
            KXDrawEllipse(at, {9, 5}, KXShapePaint(paper));
            KXUIGlobalFontPrint({12, 218}, paper, "Space: a step   N: day or night   Music:");
            volume.draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
