#include "TitleScene.h"

#include "Controls.h"
#include "HostScene.h"
#include "JoinScene.h"
#include "LevelScene.h"
#include "OptionsScene.h"
#include "ScoresScene.h"
#include "WidgetsScene.h"

void drawBackdrop(App& app) {
    app.assets.picture("background").draw(0, 0, 1.0f, 2.0f, 0, 0, -1);
    KXDrawRectFill({{0, 0}, Style::windowSize}, Style::faded(Style::night, 0.45f));
}

TitleScene::TitleScene(App& app)
    : _app(app), _buttons({400, 215}, 180,
                          {"Keep the fire", "Two keepers", "Host a night", "Join a night", "Best keepers",
                           "Options", "Widgets", "Leave"}),
      _sway({.from = -4,
             .to = 4,
             .seconds = 1.6f,
             .ease = KXEaseInOutSine,
             .repeats = -1,
             .backAndForth = -1}) {
    app.assets.load(_fire, "fire");
    _fire.setAnimation("burn");
    _fire.setScale(5);
    app.assets.load(_hero, "hero");
    _hero.setAnimation("stand right");
    _hero.setScale(5);
}

std::unique_ptr<Scene> TitleScene::chosen(int button) {
    if (button >= 0)
        _app.audio.play(Effect::Click);
    switch (button) {
    case 0:
    case 1:
        return std::make_unique<LevelScene>(_app, button + 1);
    case 2:
        return std::make_unique<HostScene>(_app, _app.options.hostPort ? _app.options.hostPort
                                                                       : HostScene::usualPort);
    case 3:
        return std::make_unique<JoinScene>(_app);
    case 4:
        return std::make_unique<ScoresScene>(_app, -1);
    case 5:
        return std::make_unique<OptionsScene>(_app);
    case 6:
        return std::make_unique<WidgetsScene>(_app);
    case 7:
        askToLeave();
        return nullptr;
    default:
        return nullptr;
    }
}

void TitleScene::askToLeave() {
    _dialog = std::make_unique<KXUIDialogBox>();
    _dialog->setPadding(14);
    _dialog->setBackgroundColor(0.141f, 0.110f, 0.200f, 1);
    _dialog->setTextColor(0.957f, 0.890f, 0.757f, 1);
    _dialog->setBorderColor(1, 0.851f, 0.541f, 1);
    _dialog->setMessage("Leave the fire alone tonight?");
    _dialog->addButton("Leave");
    _dialog->addButton("Stay");
    _dialog->setOrigin({400 - _dialog->rect().size.width / 2, 230});
}

std::unique_ptr<Scene> TitleScene::step() {
    _fire.poll();
    _hero.poll();
    _sway.step();
    if (!_dialog) {
        if (Controls::menuLeaves())
            askToLeave();
        return chosen(_buttons.step());
    }
    if (Controls::menuChooses())
        _dialog->button(0)->click(0);
    if (Controls::menuLeaves())
        _dialog->button(1)->click(0);
    _dialog->poll();
    if (_dialog->buttonIndexClicked() == 0)
        KXApplicationRequestQuit();
    if (_dialog->buttonIndexClicked() >= 0)
        _dialog.reset();
    return nullptr;
}

void TitleScene::draw() {
    drawBackdrop(_app);
    constexpr float logoScale = 14;
    KXTexture& logo = _app.assets.picture("logo");
    logo.draw(static_cast<int>(400 - logo.size().width * logoScale / 2), 60 + static_cast<int>(_sway.value()),
              1.0f, logoScale, 0, 0, -1);
    Style::printCentred(400, 172, 16, Style::paper, "Bring moths to the fire. Keep it until dawn.");
    _app.assets.picture("logs").draw(116, 396, 1.0f, 5.0f, 0, 0, -1);
    _fire.draw({116, 340});
    _hero.draw({220, 330});
    _buttons.draw();
    if (_dialog) {
        KXDrawRectFill({{0, 0}, Style::windowSize}, Style::faded(Style::ink, 0.6f));
        _dialog->draw();
    }
}
