#include "ControlsScene.h"

#include "OptionsScene.h"
#include "Rebinding.h"
#include "TitleScene.h"

static constexpr int columns = 2, fontSize = 11;
static constexpr KXPoint corner = {112, 122};
static constexpr KXSize cellSize = {300, 23}, pitch = {316, 38};

ControlsScene::ControlsScene(App& app) : _app(app) {
    for (int i = 0; i < Controls::actionsOfPlayer; ++i)
        for (const auto& actions : Controls::ofPlayer)
            addCell(actions[i]);
    addCell(Controls::pause);
    addCell(Controls::fullscreen);
    addCell(nullptr, "Back to the defaults");
    addCell(nullptr, "Back");
    showInputs();
}

void ControlsScene::addCell(const char* action, const char* caption) {
    const int row = static_cast<int>(_cells.size()) / columns,
              column = static_cast<int>(_cells.size()) % columns;
    auto button = std::make_unique<KXUIButton>();
    button->setFont(_app.assets.path("font.ttf"), KXAliasModeTexture);
    button->setFontSize(fontSize);
    button->setText(caption);
    button->setOrigin({corner.x + pitch.width * static_cast<float>(column),
                       corner.y + pitch.height * static_cast<float>(row)});
    button->setSize(cellSize);
    _cells.push_back({action, std::move(button)});
}

static std::string captionOf(const KXActions& actions, const char* action) {
    const std::string title = action == Controls::pause        ? "Pause: "
                              : action == Controls::fullscreen ? "Fullscreen: "
                                                               : "";
    return title + Controls::inputsOf(actions, action);
}

void ControlsScene::showInputs() {
    for (const auto& [action, button] : _cells)
        if (action) {
            button->setText(captionOf(_app.actions, action).c_str());
            button->setSize(cellSize);
        }
}

// The index of the button that was clicked or chosen with the keys, -1 for none.
int ControlsScene::chosenCell() {
    const int count = static_cast<int>(_cells.size());
    const KXPoint moves = Controls::menuMoves();
    _focus = (_focus + count + static_cast<int>(moves.x) + columns * static_cast<int>(moves.y)) % count;
    const bool moved = _pointer.x != KXMousePoint.x || _pointer.y != KXMousePoint.y;
    _pointer = KXMousePoint;
    int chosen = Controls::menuChooses() ? _focus : -1;
    for (int i = 0; i < count; ++i) {
        KXUIButton& button = *_cells[static_cast<std::size_t>(i)].button;
        if (moved && button.mouseOver())
            _focus = i;
        if (button.clicked(KXMouseLeft))
            chosen = i;
    }
    return chosen;
}

void ControlsScene::bind(const KXInput& input) {
    _news = Controls::rebind(_app.actions, _asked, input);
    _app.settingsChanged();
    showInputs();
}

void ControlsScene::stepQuestion() {
    KXInput input;
    if (!KXNextPress(&input, KXInputKindPosition))
        return;
    if (!KXInputsAreEqual(input, KXInputOfPosition(KXPositionEscape)))
        bind(input);
    _waits = input.kind == KXInputKindMouseButton;
    _asked = nullptr;
    _app.audio.play(Effect::Click);
}

std::unique_ptr<Scene> ControlsScene::step() {
    _waits = _waits && KXMouse(KXMouseLeft);
    if (_asked || _waits) {
        if (_asked)
            stepQuestion();
        return nullptr;
    }
    const int chosen = chosenCell(), back = static_cast<int>(_cells.size()) - 1, defaults = back - 1;
    if (chosen < 0 && !Controls::menuLeaves())
        return nullptr;
    _app.audio.play(Effect::Click);
    if (chosen < 0 || chosen == back)
        return std::make_unique<OptionsScene>(_app);
    _asked = _cells[static_cast<std::size_t>(chosen)].action;
    _news.clear();
    if (chosen == defaults) {
        _app.actions = Controls::defaults();
        _app.settingsChanged();
        showInputs();
    }
    return nullptr;
}

void ControlsScene::draw() {
    drawBackdrop(_app);
    _app.assets.picture("panel").drawNineSlice({20, 40}, {760, 420}, 8);
    Style::printCentred(400, 58, 24, Style::gold, "Keys and pads");
    const float second = corner.x + pitch.width;
    KXUIGlobalFontPrint({corner.x, corner.y - 24}, Style::gold, "First player");
    KXUIGlobalFontPrint({second, corner.y - 24}, Style::gold, "Second player");
    const char* const labels[] = {"Left", "Right", "Up", "Down", "Hop"};
    float y = corner.y + 3;
    for (const char* label : labels) {
        KXUIGlobalFontPrint({corner.x - 66, y}, Style::paper, label);
        y += pitch.height;
    }
    for (const auto& [action, button] : _cells)
        button->draw();
    const KXRect focus = _cells[static_cast<std::size_t>(_focus)].button->rect();
    KXDrawRect({{focus.origin.x - 2, focus.origin.y - 2}, {focus.size.width + 4, focus.size.height + 4}},
               Style::gold);
    Style::printCentred(
        400, 410, 14, _asked ? Style::gold : Style::rose,
        _asked ? KXTempString("Press the new key or button for \"%s\". Escape leaves it as it is.", _asked)
               : _news.c_str());
}
