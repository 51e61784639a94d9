#include "Demo.h"

#include <SDL_opengl.h>

#include <cstdio>
#include <filesystem>

namespace {
// Key numbers of the library.
constexpr int keyB = 2, keyF = 6, keyH = 8, keyM = 13, keyP = 16, keyEscape = 69, key3 = 74;
constexpr int leftButton = 0;

constexpr KXSize windowSize = {800, 500};
constexpr KXPoint panelPosition = {20, 20};
constexpr KXSize smallPicture = {200, 125};
constexpr KXPoint firePosition = {384, 404};

bool near(KXPoint a, KXPoint b, float distance) {
    const float x = a.x - b.x, y = a.y - b.y;
    return x * x + y * y < distance * distance;
}
} // namespace

Demo::Demo(const std::string& assets)
    : _assets(assets), _window("Kobaltrix", windowSize, -1), _hero(_assets), _moths(_assets) {
    _assets.load(_fire, "fire");
    _fire.setAnimation("burn");
    _fire.setScale(4);
    _window.setMinimumSize({400, 250});
    _window.setRenderContext();
    _target =
        std::make_unique<KXTexture>(static_cast<int>(windowSize.width), static_cast<int>(windowSize.height));
}

void Demo::step() {
    ++_steps;
    stepSwitches();
    stepPanel();
    stepPlacing();
    _hero.step();
    _moths.step(_hero);
    _fire.poll();
}

void Demo::stepPlacing() {
    const bool down = KXMouse(leftButton);
    if (down && !_clicked && !_draggingPanel)
        _hero.place(KXMousePoint);
    _clicked = down;
}

void Demo::stepPanel() {
    const KXPoint corner = {panelPosition.x + _panel.width, panelPosition.y + _panel.height};
    if (!KXMouse(leftButton))
        _draggingPanel = false;
    else if (!_clicked && near(KXMousePoint, corner, 16))
        _draggingPanel = true;
    if (!_draggingPanel)
        return;
    _panel = {KXMousePoint.x - panelPosition.x, KXMousePoint.y - panelPosition.y};
    KXClampf(&_panel.width, 200, 760);
    KXClampf(&_panel.height, 208, 460);
}

void Demo::stepSwitches() {
    if (KXKey(keyEscape, 1))
        KXApplicationRequestQuit();
    if (KXKey(keyH, 1))
        _showBoxes = !_showBoxes;
    if (KXKey(keyM, 1))
        _smallPictureFlips = (_smallPictureFlips + 2) % 8; // none, left to right, top to bottom, both
    if (KXKey(key3, 1))
        _threeDimensions = !_threeDimensions;
    if (KXKey(keyF, 1)) {
        if (_window.isFullscreen())
            _window.exitFullscreen();
        else
            _window.enterFullscreen();
    }
    if (KXKey(keyB, 1))
        save("kobaltrix-demo.bmp");
    if (KXKey(keyP, 1))
        save("kobaltrix-demo.png");
}

int Demo::save(const std::string& path) {
    draw(); // what was shown last is not there to be read any more
    int saved = 0;
    if (path.ends_with(".bmp")) {
        saved = _window.saveBuffer(path.c_str(), 0);
    } else if (const std::unique_ptr<KXTexture> copy{_window.copyTexture()}) {
        saved = copy->writeToPNG(path.c_str());
    }
    if (saved)
        std::printf("Screenshot: %s\n", std::filesystem::absolute(path).c_str());
    else
        std::fprintf(stderr, "play: %s\n", KXError());
    return saved;
}

void Demo::draw() {
    // The scene once more, into a texture of the window's size, which the user may have changed.
    const KXSize size = _window.size();
    if (!_target || _target->size().width != size.width || _target->size().height != size.height)
        _target = std::make_unique<KXTexture>(static_cast<int>(size.width), static_cast<int>(size.height));
    _target->setRenderContext();
    drawScene();
    _target->unsetRenderContext();

    _window.setRenderContext();
    glClearColor(0.1f, 0.1f, 0.2f, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawScene();
    if (_threeDimensions)
        drawCrate();
    drawPrimitives();
    drawClippedView();
    drawPanel();
    drawSmallPicture();
}

void Demo::drawScene() {
    KXTexture& background = _assets.picture("background");
    const KXSize size = _window.size(), natural = background.size();
    background.draw(0, 0, 1.0f, KXMaxf(size.width / natural.width, size.height / natural.height), 0, 0, -1);
    _fire.draw(firePosition);
    _hero.draw();
    _moths.draw();
    if (!_showBoxes)
        return;
    KXDrawRect(boxOnScreen(_fire, firePosition, "hit"), KXRedColor);
    _hero.drawBox();
    _moths.drawBoxes();
}

void Demo::drawPrimitives() {
    const KXColor rose = KXMakeColori(232, 104, 120, 190), sky = KXMakeColori(120, 190, 232, 190),
                  gold = KXMakeColori(255, 217, 138, 255), leaf = KXMakeColori(126, 201, 128, 190);
    const float x = _window.size().width - 330, y = _window.size().height - 80;
    KXDrawRectFill({{x, y}, {56, 44}}, rose);
    KXDrawRectFill({{x + 24, y + 16}, {56, 44}}, sky); // shows through
    KXDrawRect({{x + 24, y + 16}, {56, 44}}, gold);
    KXDrawCircleFill({x + 130, y + 30}, 28, 32, leaf);
    KXDrawCircle({x + 130, y + 30}, 28, 32, gold);
    KXDrawCircle({x + 150, y + 30}, 28, 6, gold);
    KXDrawTriangleFill({x + 230, y}, {x + 200, y + 56}, {x + 260, y + 56}, rose);
    KXDrawTriangle({x + 230, y}, {x + 200, y + 56}, {x + 260, y + 56}, gold);
    for (int i = 0; i < 9; ++i)
        KXDrawLine({x + 272, y}, {x + 272 + static_cast<float>(i) * 5, y + 58}, gold);
}

void Demo::drawPanel() {
    _assets.picture("panel").drawNineSlice(panelPosition, _panel, 8);
    _window.setClipTo({{panelPosition.x + 8, panelPosition.y + 8}, {_panel.width - 16, _panel.height - 16}});
    _assets.picture("keys").draw(static_cast<int>(panelPosition.x) + 22,
                                 static_cast<int>(panelPosition.y) + 22, 1.0f, 2.0f, 0, 0, -1);
    _window.unsetClip();
    const KXPoint corner = {panelPosition.x + _panel.width, panelPosition.y + _panel.height};
    const bool hot = _draggingPanel || near(KXMousePoint, corner, 16);
    for (int i = 0; i < 3; ++i) {
        const auto inset = static_cast<float>(10 + 4 * i);
        KXDrawLine({corner.x - inset, corner.y - 9}, {corner.x - 9, corner.y - inset},
                   hot ? KXMakeColor(1, 1, 1, 1) : KXMakeColor(1, 1, 1, 0.45f));
    }
}

// Stripes that slide behind an opening.
void Demo::drawClippedView() {
    const KXRect opening = {{_window.size().width - smallPicture.width - 30, 172}, {smallPicture.width, 28}};
    KXDrawRectFill(opening, {0, 0, 0, 0.5f});
    _window.setClipTo(opening);
    const auto shift = static_cast<float>(_steps % 40);
    for (int stripe = -1; stripe < 5; ++stripe) {
        const float x = opening.origin.x + shift + 40 * static_cast<float>(stripe);
        KXDrawTriangleFill({x, opening.origin.y}, {x + 20, opening.origin.y + 14}, {x, opening.origin.y + 28},
                           KXMakeColori(255, 217, 138, 220));
    }
    _window.unsetClip();
    KXDrawRect(opening, KXMakeColori(255, 217, 138, 255));
}

void Demo::drawSmallPicture() {
    const KXRect frame = {{_window.size().width - smallPicture.width - 30, 30}, smallPicture};
    KXDrawRectFill(
        {{frame.origin.x - 4, frame.origin.y - 4}, {smallPicture.width + 8, smallPicture.height + 8}},
        KXMakeColori(26, 22, 38, 255));
    const KXSize size = _target->size();
    const float scale = KXMinf(smallPicture.width / size.width, smallPicture.height / size.height);
    _target->draw(static_cast<int>(frame.origin.x + (smallPicture.width - size.width * scale) / 2),
                  static_cast<int>(frame.origin.y + (smallPicture.height - size.height * scale) / 2), 1.0f,
                  scale, 0, _smallPictureFlips, -1);
    KXDrawRect(frame, KXMakeColori(255, 217, 138, 255));
}

// The game's own OpenGL, between calls of the library: a crate that turns, with its depth tested.
void Demo::drawCrate() {
    static constexpr float sides[6][4][3] = {
        {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}},
        {{1, -1, -1}, {-1, -1, -1}, {-1, 1, -1}, {1, 1, -1}},
        {{1, -1, 1}, {1, -1, -1}, {1, 1, -1}, {1, 1, 1}},
        {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1}, {-1, 1, -1}},
        {{-1, 1, 1}, {1, 1, 1}, {1, 1, -1}, {-1, 1, -1}},
        {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}},
    };
    static constexpr float texels[4][2] = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    static constexpr float light[6] = {1, 0.5f, 0.8f, 0.6f, 1.1f, 0.4f};
    const auto turn = static_cast<float>(_steps);

    _window.setRenderingMode(KXWindowRenderingMode3D);
    _assets.picture("crate").bind();
    for (int crate = 0; crate < 2; ++crate) { // the second one passes through the first
        glLoadIdentity();
        glTranslatef(0.4f + 0.9f * static_cast<float>(crate), -0.1f, -8 - 0.6f * static_cast<float>(crate));
        glRotatef(25, 1, 0, 0);
        glRotatef(turn * (crate ? -1.2f : 0.8f) + 30, 0, 1, 0);
        glBegin(GL_QUADS);
        for (int side = 0; side < 6; ++side) {
            glColor4f(light[side], light[side], light[side], 1);
            for (int corner = 0; corner < 4; ++corner) {
                glTexCoord2fv(texels[corner]);
                glVertex3fv(sides[side][corner]);
            }
        }
        glEnd();
    }
    _window.setRenderingMode(KXWindowRenderingMode2D);
}
