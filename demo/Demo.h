#pragma once

#include "Hero.h"
#include "Moths.h"

#include <memory>
#include <string>

/// One window that shows what the library draws: sprites from sprite files, one of them to steer, a panel to
/// resize, every primitive, a small picture of the scene drawn into a texture, a clipped view, and a crate
/// drawn with OpenGL of its own.
class Demo {
public:
    /// @param assets the folder of the pictures.
    explicit Demo(const std::string& assets);

    KXWindow& window() { return _window; }
    /// One logic step: reads keys and mouse.
    void step();
    /// Draws a frame; the caller swaps.
    void draw();
    /// Writes the frame as a PNG file, or as a BMP file if the name says so.
    int save(const std::string& path);

private:
    void stepPanel();
    void stepPlacing();
    void stepSwitches();
    void drawScene();
    void drawPrimitives();
    void drawPanel();
    void drawClippedView();
    void drawSmallPicture();
    void drawCrate();

    Assets _assets;
    KXWindow _window;
    std::unique_ptr<KXTexture> _target; ///< The scene in small; as large as the window.
    Hero _hero;
    Moths _moths;
    KXSprite _fire;
    int _smallPictureFlips = 0;
    bool _showBoxes = false;
    KXSize _panel = {220, 220};
    bool _draggingPanel = false;
    bool _threeDimensions = false;
    bool _clicked = false;
    int _steps = 0;
};
