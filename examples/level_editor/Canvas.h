// Where a level is seen and painted: a widget like any other.
#pragma once

#include "Level.h"

#include <Kobaltrix/Kobaltrix.h>

enum class Tool { Brush, Fill, Erase, Pick };

class Canvas : public _KXUIWidget {
public:
    explicit Canvas(History& of) : _history(of) {}

    Tool tool = Tool::Brush;
    int layer = 0, tile = 0;
    bool showsGrid = true;

    void zoomAt(KXPoint point, float factor);
    void showWhole();
    float zoom() const { return _zoom; }
    /// The cell under the pointer or the one that keys have gone to.
    int column() const { return _column; }
    int row() const { return _row; }

    // What a panel asks of it.
    int pollInPanel() override;
    int handleKey(const KXUIKey& key) override;
    int takesWheel() const override { return -1; }
    KXUIDescription description() const override;
    void draw() override;

private:
    KXCamera camera() const;
    void goTo(int column, int row);
    void use();
    void drawLayers(const Level& level, KXRect bounds);

    History& _history;
    KXTexture _tiles{KXTempString("%s/assets/tiles.png", KXExecutablePath)};
    KXPoint _centre = {0, 0};
    float _zoom = 1;
    int _column = 0, _row = 0;
    bool _isPainting = false, _acted = false;
};
