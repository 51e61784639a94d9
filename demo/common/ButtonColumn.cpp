#include "ButtonColumn.h"

#include "MenuControls.h"

#include <algorithm>

ButtonColumn::ButtonColumn(KXPoint top, float width, const std::vector<std::string>& captions) {
    constexpr float gap = 8;
    float y = top.y;
    for (const std::string& caption : captions) {
        auto& button = *_buttons.emplace_back(std::make_unique<KXUIButton>());
        button.setText(caption.c_str());
        button.setRect({top.x - width / 2, y}, {width, -1});
        y += button.rect().size.height + gap;
    }
}

void ButtonColumn::setCaptions(const std::vector<std::string>& captions) {
    for (std::size_t i = 0; i < std::min(captions.size(), _buttons.size()); ++i) {
        const KXRect rect = _buttons[i]->rect();
        _buttons[i]->setText(captions[i].c_str());
        _buttons[i]->setRect(rect.origin, rect.size);
    }
}

void ButtonColumn::moveFocus(int by) {
    const int count = static_cast<int>(_buttons.size());
    _focus = (_focus + by + count) % count;
}

int ButtonColumn::step() {
    if (const float y = Controls::menuMoves().y)
        moveFocus(y < 0 ? -1 : 1);
    if (Controls::menuChooses())
        _buttons[static_cast<std::size_t>(_focus)]->click(0);
    const bool moved = _pointer.x != KXMousePoint.x || _pointer.y != KXMousePoint.y;
    _pointer = KXMousePoint;
    int chosen = -1;
    for (std::size_t i = 0; i < _buttons.size(); ++i) {
        if (moved && _buttons[i]->mouseOver())
            _focus = static_cast<int>(i);
        if (_buttons[i]->clicked(KXMouseLeft))
            chosen = static_cast<int>(i);
    }
    return chosen;
}

void ButtonColumn::draw() {
    for (const auto& button : _buttons)
        button->draw();
    const KXRect focus = _buttons[static_cast<std::size_t>(_focus)]->rect();
    KXDrawRect({{focus.origin.x - 2, focus.origin.y - 2}, {focus.size.width + 4, focus.size.height + 4}},
               Style::gold);
}
