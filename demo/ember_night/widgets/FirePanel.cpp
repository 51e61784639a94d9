#include "FirePanel.h"

static constexpr float left = 32, width = 204;

static void place(KXUIButton& button, float x, float y, float buttonWidth, const char* text) {
    button.setText(text);
    button.setRect({x, y}, {buttonWidth, -1});
}

FirePanel::FirePanel(App& app) : _app(app) {
    constexpr float half = (width - 8) / 2;
    place(_bell, left, 78, width, "Ring the bell");
    _bell.setTooltip("Rings as often as you like. {C0.91,0.41,0.47,1}The owl would rather sleep.{EC}");
    place(_burning, left, 110, width, "");
    _burning.setState(KXUIToggleButtonStateOn);
    _height.setSize({width, 20});
    _height.setOrigin({left, 182});
    _height.setTooltip("How high the fire burns; F2 and F3 do the same.");
    _height.setKnobFillColor(Style::wood);
    _height.setKnobPressedFillColor(Style::gold);
    place(_ask, left, 246, width, "Ask a question...");
    place(_open, left, 278, half, "Open...");
    place(_save, left + half + 8, 278, half, "Save...");
    app.assets.load(_flames, "fire");
    _flames.setAnimation("burn");
}

std::string FirePanel::step() {
    if (_bell.clicked(KXMouseLeft)) {
        _app.audio.play(Effect::Pick);
        ++_rings;
        return KXTempString("Button: rung %s", _rings == 1 ? "once" : KXTempString("%d times", _rings));
    }
    if (_burning.clicked(KXMouseLeft)) {
        _app.audio.play(Effect::Click);
        return _burning.state() == KXUIToggleButtonStateOn ? "Toggle button: on" : "Toggle button: off";
    }
    if (_height.poll())
        return KXTempString("Slider: %d", _height.value());
    return {};
}

// A button looks held until it is asked once more after its click, and a window that opens keeps it from
// being asked.
bool FirePanel::isClicked(KXUIButton& button) {
    if (!button.clicked(KXMouseLeft))
        return false;
    button.clicked(KXMouseLeft);
    return true;
}

static constexpr float middle = left + width / 2, ground = 424;
static constexpr KXRect panel = {{16, 40}, {236, 400}};

// The light stays in the panel.
void FirePanel::drawGlow() {
    constexpr int rings = 8, segments = 48, frame = 4;
    _app.window.setClipTo({{panel.origin.x + frame, panel.origin.y + frame},
                           {panel.size.width - 2 * frame, panel.size.height - 2 * frame}});
    for (int ring = 1; ring <= rings; ++ring)
        KXDrawCircleFill({middle, ground - 36}, ring * (6 + _height.value() / 12), segments,
                         Style::faded(_glow, _glow.a * 0.06f));
    _app.window.unsetClip();
}

// As high as the slider says, with its foot on the logs.
void FirePanel::drawFire() {
    constexpr float logScale = 3, pixels = 16, foot = 14; // no flame in the rows below
    const bool burns = _burning.state() == KXUIToggleButtonStateOn;
    if (burns)
        drawGlow();
    KXTexture& logs = _app.assets.picture("logs");
    logs.draw(static_cast<int>(middle - logs.size().width * logScale / 2),
              static_cast<int>(ground - logs.size().height * logScale), 1.0f, logScale, 0, 0, -1);
    if (!burns)
        return;
    const float scale = 1 + 5 * static_cast<float>(_height.value()) / 100;
    _flames.setScale(scale);
    _flames.draw({middle - pixels / 2 * scale, ground - 8 - foot * scale});
}

void FirePanel::draw() {
    _app.assets.picture("panel").drawNineSlice(panel.origin, panel.size, 8);
    KXUIGlobalFontPrint({left, 54}, Style::gold, "Buttons");
    KXUIGlobalFontPrint({left, 158}, Style::gold, "Slider");
    const char* const value = KXTempString("%d", _height.value());
    KXUIGlobalFontPrint({left + width - KXUIGlobalFontStringBounds(value).width, 158}, Style::paper, value);
    KXUIGlobalFontPrint({left, 222}, Style::gold, "Windows");
    drawFire();
    _burning.setText(_burning.state() == KXUIToggleButtonStateOn ? "The fire burns" : "The fire is out");
    _burning.setSize({width, -1});
    for (KXUIButton* button : {&_bell, static_cast<KXUIButton*>(&_burning), &_ask, &_open, &_save})
        button->draw();
    _height.draw();
}
