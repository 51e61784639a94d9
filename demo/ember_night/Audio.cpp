#include "Audio.h"

#include "Style.h"

#include <iterator>

Audio::Audio(const Assets& assets)
    : CommonAudio(assets, {"click", "pick", "feed", "hop", "hurt", "bat", "dawn", "dark"}) {
    KXSetSoundView({{{0, 0}, Style::windowSize}});
}

void Audio::play(Effect effect, KXPoint at) {
    constexpr float pitches[] = {1, 1.06f, 0.95f, 1.02f, 0.91f}; // no two hops in a row are the same
    KXSoundOptions options;
    if (effect == Effect::Hop)
        options.pitch = pitches[_hops++ % std::size(pitches)];
    start(static_cast<std::size_t>(effect), at, options);
}
