#include "OptionsScene.h"

#include "Keys.h"
#include "TitleScene.h"

static void place(KXUISlider& slider, float y, int value) {
    constexpr int loudest = 128;
    slider.setSize({190, 20});
    slider.setOrigin({360, y});
    slider.setKnobFillColor(Style::wood);
    slider.setKnobPressedFillColor(Style::gold);
    slider.setValueRange(0, loudest);
    slider.setValue(value);
}

OptionsScene::OptionsScene(App& app) : _app(app) {
    place(_sounds, 160, app.settings.soundVolume);
    place(_music, 200, app.settings.musicVolume);
    _name.setRect({360, 240}, {190, 24});
    _name.setMaximumLength(20);
    _name.setText(app.settings.name.c_str());
    _pad.setOrigin({360, 282});
    _pad.setState(app.settings.usesPad ? KXUIToggleButtonStateOn : KXUIToggleButtonStateOff);
    _back.setText("Back");
    _back.setOrigin({370, 340});
}

std::unique_ptr<Scene> OptionsScene::step() {
    const bool typing = _name.isFocused();
    const bool escape = KXKey(Key::escape, 1) != 0; // the press that leaves the name does not count later
    _name.poll();
    if (_sounds.poll() | _music.poll()) {
        _app.settings.soundVolume = _sounds.value();
        _app.settings.musicVolume = _music.value();
        _app.audio.setVolumes(_sounds.value(), _music.value());
        if (!KXMouse(0))
            _app.audio.play(Effect::Click);
    }
    if (_pad.clicked(0))
        _app.settings.usesPad = _pad.state() == KXUIToggleButtonStateOn;
    const bool back = _back.clicked(0) != 0;
    if (!back && (typing || !escape))
        return nullptr;
    if (*_name.text())
        _app.settings.name = _name.text();
    _app.audio.play(Effect::Click);
    _app.settingsChanged();
    return std::make_unique<TitleScene>(_app);
}

void OptionsScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({220, 90}, {360, 300}, 8);
    Style::printCentred(400, 108, 24, Style::gold, "Options");
    const char* const labels[] = {"Sounds", "Music", "Name", "First player"};
    float y = 162;
    for (const char* label : labels) {
        KXUIGlobalFontPrint({250, y}, Style::paper, label);
        y += 40;
    }
    _pad.setText(_pad.state() == KXUIToggleButtonStateOn ? "steers with the pad" : "steers with the keys");
    _sounds.draw();
    _music.draw();
    _name.draw();
    _pad.draw();
    _back.draw();
}
