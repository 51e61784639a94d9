#pragma once

#include "Style.h"

#include <memory>
#include <string>
#include <vector>

/// Buttons below each other, for the mouse, the arrow keys and the pad.
class ButtonColumn {
public:
    /// @param top the middle of the upper edge.
    ButtonColumn(KXPoint top, float width, const std::vector<std::string>& captions);

    /// Other captions for the same buttons.
    void setCaptions(const std::vector<std::string>& captions);
    /// One logic step. @return the index of the button that was chosen, -1 for none.
    int step();
    void draw();

private:
    void moveFocus(int by);

    std::vector<std::unique_ptr<KXUIButton>> _buttons;
    int _focus = 0;
    KXPoint _pointer = KXMousePoint;
};
