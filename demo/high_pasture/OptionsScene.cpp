#include "Rebinding.h"
#include "Scenes.h"

#include <iterator>

static void place(KXUISlider& slider, float y, int value) {
    constexpr int loudest = 128;
    slider.setSize({220, 20});
    slider.setOrigin({380, y});
    slider.setKnobFillColor(Style::wood);
    slider.setKnobPressedFillColor(Style::gold);
    slider.setValueRange(0, loudest);
    slider.setValue(value);
}

std::vector<std::string> OptionsScene::captions() const {
    std::vector<std::string> captions;
    for (const char* action : Controls::all)
        captions.push_back(std::string(action) + ": " + Controls::inputsOf(_app.actions, action));
    captions.insert(captions.end(), {"Back to the defaults", "Back"});
    return captions;
}

OptionsScene::OptionsScene(App& app) : _app(app), _backdrop(app), _buttons({400, 166}, 480, captions()) {
    place(_sounds, 96, app.progress.soundVolume);
    place(_music, 128, app.progress.musicVolume);
}

// Anything but Escape is the new input.
void OptionsScene::stepQuestion() {
    KXInput input;
    if (!KXNextPress(&input, KXInputKindPosition))
        return;
    _news.clear();
    if (!KXInputsAreEqual(input, KXInputOfPosition(KXPositionEscape)))
        _news = Controls::rebind(_app.actions, _asked, input);
    _waits = input.kind == KXInputKindMouseButton;
    _asked = nullptr;
    _buttons.setCaptions(captions());
    _app.audio.click();
    _app.progressChanged();
}

std::unique_ptr<Scene> OptionsScene::step() {
    constexpr int actions = static_cast<int>(std::size(Controls::all));
    _backdrop.step();
    _waits = _waits && KXMouse(KXMouseLeft);
    if (_asked)
        stepQuestion();
    else if (!_waits) {
        if (_sounds.poll() | _music.poll()) {
            _app.progress.soundVolume = _sounds.value();
            _app.progress.musicVolume = _music.value();
            _app.audio.setVolumes(_sounds.value(), _music.value());
        }
        const int chosen = _buttons.step();
        const bool leaves = chosen > actions || Controls::menuLeaves();
        if (chosen >= 0 || leaves)
            _app.audio.click();
        if (chosen >= 0 && chosen < actions)
            _asked = Controls::all[chosen];
        if (chosen == actions) {
            _app.actions = Controls::defaults();
            _buttons.setCaptions(captions());
        }
        if (leaves) {
            _app.progressChanged();
            return std::make_unique<TitleScene>(_app);
        }
    }
    return nullptr;
}

void OptionsScene::draw() {
    _backdrop.draw();
    Style::fillRounded({{130, 34}, {540, 450}}, 12, Style::faded(Style::ink, 0.82f));
    Style::printCentred(400, 48, 26, Style::gold, "Options");
    KXUIGlobalFontPrint({200, 98}, Style::paper, "Sounds");
    KXUIGlobalFontPrint({200, 130}, Style::paper, "Music");
    _sounds.draw();
    _music.draw();
    _buttons.draw();
    Style::printCentred(
        400, 460, 14, _asked ? Style::gold : Style::rose,
        _asked ? KXTempString("Press the new key or button for \"%s\". Escape leaves it as it is.", _asked)
               : _news.c_str());
}
