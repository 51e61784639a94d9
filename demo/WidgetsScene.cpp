#include "WidgetsScene.h"

#include "Keys.h"
#include "TitleScene.h"

WidgetsScene::WidgetsScene(App& app) : _app(app) {
    _back.setText("Back");
    _back.setOrigin({370, 460});
}

std::unique_ptr<Scene> WidgetsScene::step() {
    const bool back = _back.clicked(0) != 0;
    if (back || KXKey(Key::escape, 1))
        return std::make_unique<TitleScene>(_app);
    return nullptr;
}

void WidgetsScene::draw() {
    drawBackdrop(_app);
    _back.draw();
}
