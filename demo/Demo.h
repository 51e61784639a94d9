#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <memory>
#include <string>

/// One window that shows what the library draws: a figure to walk and turn, a panel to resize, every
/// primitive, a small picture of the scene drawn into a texture, a clipped view, and a crate drawn with
/// OpenGL of its own.
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
    KXTexture& picture(const char* name);
    void stepFigure();
    void stepPanel();
    void stepSwitches();
    void drawScene();
    void drawPrimitives();
    void drawPanel();
    void drawClippedView();
    void drawSmallPicture();
    void drawCrate();

    std::string _assets;
    KXWindow _window;
    std::unique_ptr<KXTexture> _target; ///< The scene in small; as large as the window.
    KXPoint _figure = {120, 340};
    int _figureAngle = 0;
    int _figureFlips = 0;
    KXSize _panel = {220, 196};
    bool _draggingPanel = false;
    bool _threeDimensions = false;
    bool _clicked = false;
    int _steps = 0;
};
