#pragma once

#include "App.h"

#include <string>

/// Buttons and a slider, and the fire that they look after.
class FirePanel {
public:
    explicit FirePanel(App& app);

    /// One logic step. @return what a widget did, in words; empty for nothing.
    std::string step();
    /// What moves by itself.
    void animate() { _flames.poll(); }
    void draw();

    void setHeight(int height) { _height.setValue(height); }
    int height() const { return _height.value(); }
    void setGlow(KXColor color) { _glow = color; }
    void putOut() { _burning.setState(KXUIToggleButtonStateOff); }
    bool asksQuestion() { return isClicked(_ask); }
    bool asksToOpen() { return isClicked(_open); }
    bool asksToSave() { return isClicked(_save); }

private:
    static bool isClicked(KXUIButton& button);
    void drawGlow();
    void drawFire();

    App& _app;
    KXUIButton _bell, _ask, _open, _save;
    KXUIToggleButton _burning;
    KXUISlider _height;
    KXSprite _flames;
    KXColor _glow = Style::gold;
    int _rings = 0;
};
