#include "ResultScene.h"

#include "ScoresScene.h"
#include "TitleScene.h"

ResultScene::ResultScene(App& app, int score) : _app(app), _score(score) {
    constexpr int longestName = 20;
    _name.setRect({300, 236}, {140, 24});
    _name.setMaximumLength(longestName);
    _name.setText(app.settings.name.c_str());
    _name.focus();
    _name.selectAll();
    _done.setText("Done");
    _done.setOrigin({452, 236});
}

std::unique_ptr<Scene> ResultScene::step() {
    _name.poll();
    const bool done = _done.clicked(KXMouseLeft) != 0;
    if (!done && !_name.entered())
        return nullptr;
    _app.audio.play(Effect::Click);
    if (*_name.text())
        _app.settings.name = _name.text();
    const int place = _app.settings.enterScore(_app.settings.name, _score);
    _app.settingsChanged();
    return std::make_unique<ScoresScene>(_app, place);
}

void ResultScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({240, 170}, {320, 120}, 8);
    Style::printCentred(400, 186, 20, Style::gold, KXTempString("%d points", _score));
    Style::printCentred(400, 214, 14, Style::paper, "Who kept the fire?");
    _name.draw();
    _done.draw();
}
