#include "Audio.h"

#include <cmath>

Audio::Audio(const Assets& assets)
    : CommonAudio(assets, {"click", "jump", "land", "pick", "stomp", "tumble", "bell", "home"}) {}

void Audio::play(const Event& event) {
    constexpr unsigned steps = 5; // of the scale, and then from its beginning
    KXSoundOptions options;
    if (event.kind == Event::Pick)
        options.pitch = std::pow(2.0f, static_cast<float>(_picked++ % steps) / 12 * 2);
    start(static_cast<std::size_t>(event.kind) + 1, event.at, options);
}
