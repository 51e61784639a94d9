#include "OptionsScene.h"

#include "ControlsScene.h"
#include "TitleScene.h"

#include <utility>

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
    _controls.setText("Keys and pads...");
    _controls.setOrigin({360, 278});
    tellShakes();
    _shakes.setOrigin({360, 312});
    _back.setText("Back");
    _back.setOrigin({370, 348});
}

void OptionsScene::tellShakes() { _shakes.setText(_app.settings.shakes ? "On" : "Off"); }

std::unique_ptr<Scene> OptionsScene::step() {
    const bool typing = _name.isFocused();
    _name.poll();
    if (_sounds.poll() | _music.poll()) {
        _app.settings.soundVolume = _sounds.value();
        _app.settings.musicVolume = _music.value();
        _app.audio.setVolumes(_sounds.value(), _music.value());
        if (!KXMouse(KXMouseLeft))
            _app.audio.play(Effect::Click);
    }
    if (_shakes.clicked(KXMouseLeft)) {
        _app.settings.shakes = !_app.settings.shakes;
        tellShakes();
        _app.audio.play(Effect::Click);
    }
    const bool controls = _controls.clicked(KXMouseLeft) != 0, back = _back.clicked(KXMouseLeft) != 0;
    if (!controls && !back && (typing || !Controls::menuLeaves()))
        return nullptr;
    if (*_name.text())
        _app.settings.name = _name.text();
    _app.audio.play(Effect::Click);
    _app.settingsChanged();
    if (controls)
        return std::make_unique<ControlsScene>(_app);
    return std::make_unique<TitleScene>(_app);
}

void OptionsScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({220, 90}, {360, 300}, 8);
    Style::printCentred(400, 108, 24, Style::gold, "Options");
    constexpr std::pair<const char*, float> labels[] = {
        {"Sounds", 162}, {"Music", 202}, {"Name", 242}, {"Controls", 282}, {"Shaking", 316}};
    for (const auto& [label, y] : labels)
        KXUIGlobalFontPrint({250, y}, Style::paper, label);
    _sounds.draw();
    _music.draw();
    _name.draw();
    _controls.draw();
    _shakes.draw();
    _back.draw();
}
