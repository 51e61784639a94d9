#pragma once

#include "ui/Focus.h"

#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIWidget.h>

#include <cstdint>

/// A scroll bar: how far something is scrolled that is longer than what is seen of it. Its knob is dragged,
/// and a press beside it turns a page, again and again while it is held. All lengths are pixels.
class _KXScrollBar : public _KXUIWidget {
public:
    static constexpr float thickness = 12;

    explicit _KXScrollBar(bool isVertical);
    /// What there is, and what of it is seen; the offset is brought within that.
    void setLengths(float content, float seen);
    void setOffset(float offset);
    float offset() const { return _offset; }
    float furthest() const { return _content > _seen ? _content - _seen : 0; }
    void setColors(const KXUIColors& colors) { _colors = colors; }

    int pollInPanel() override;
    int takesKeyboard() const override { return 0; }
    void setWindowID(unsigned id) override;
    void draw() override;
    KXUIDescription description() const override;
    _KXFocus* keyboardPart() override { return &_hand; }

private:
    struct Hand final : _KXFocus {
        explicit Hand(_KXScrollBar& of) : bar(of) {}
        void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
        _KXScrollBar& bar;
    };
    float along(KXPoint point) const { return _isVertical ? point.y : point.x; }
    float length() const { return _isVertical ? rect().size.height : rect().size.width; }
    float knobLength() const;
    float knobStart() const;
    void press(float place);
    void drag(float place);
    void turnPage();

    bool _isVertical;
    float _content = 0, _seen = 0, _offset = 0;
    float _grip = -1;     // from the start of the knob to where it is held; less than 0 while it is not
    float _pageGoal = -1; // where the press beside the knob is; less than 0 without one
    std::uint32_t _pageStep = 0;
    bool _moved = false;
    KXUIColors _colors = KXCurrentUIColors();
    Hand _hand{*this};
};
