#include "ScoresScene.h"

#include "Controls.h"
#include "TitleScene.h"

ScoresScene::ScoresScene(App& app, int place) : _app(app) {
    _list.setRect({260, 130}, {280, 230});
    int number = 0;
    for (const auto& [name, points] : app.settings.scores)
        _list.add(KXTempString("%2d.  {C1,0.85,0.54,1}%5d{EC}  %s", ++number, points, name.c_str()));
    if (number == 0)
        _list.add("Nobody has kept the fire yet.");
    _list.setSelectedIndex(place);
    _list.setFocus(-1);
    _back.setText("Back");
    _back.setOrigin({370, 376});
}

std::unique_ptr<Scene> ScoresScene::step() {
    _list.poll();
    const bool back = _back.clicked(KXMouseLeft) != 0;
    if (!back && !Controls::menuLeaves() && !Controls::menuChooses())
        return nullptr;
    _app.audio.play(Effect::Click);
    return std::make_unique<TitleScene>(_app);
}

void ScoresScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({240, 70}, {320, 350}, 8);
    Style::printCentred(400, 90, 24, Style::gold, "Best keepers");
    _list.draw();
    _back.draw();
}
