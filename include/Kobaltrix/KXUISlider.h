#pragma once

#include <Kobaltrix/KXUIWidget.h>

/// @file
/// A horizontal slider.

/// Picks an integer of a range with a knob that is dragged along a track with the left mouse button.
///
/// Poll it with poll() once per logic step. The track is placed by setOrigin() alone: after setSize() or
/// setRect() call setOrigin() once more, or the track stays as it was. The knob stands at the value
/// divided by the width of the range, and a drag asks for 0 at the left end up to that width at the right
/// one, whatever the minimum is; a value outside of the range is refused. So let a range begin at 0 and add
/// what it begins at to the value.
class KX_API KXUISlider : public _KXUIWidget {
public:
    /// A slider from 0 to 100 at 50, with the user-interface colours of this moment.
    KXUISlider();
    ~KXUISlider() override;

    /// Moves the slider, and lays out track and knob.
    void setOrigin(KXPoint origin) override;
    /// Sets the extent in pixels, at least 32 wide and as high as a line of text with its padding (16 without
    /// a font), and lays out the knob but not the track.
    void setSize(KXSize size) override;

    void setKnobFillColor(KXColor color);        ///< The knob.
    void setKnobPressedFillColor(KXColor color); ///< The knob while it is dragged.
    void setKnobBorderColor(KXColor color);      ///< The knob's outline.
    void setTrackFillColor(KXColor color);       ///< The track.
    void setTrackBorderColor(KXColor color);     ///< The track's outline.

    /// Sets the range, both ends included. The value becomes half the range's width, counted from 0, where
    /// that lies in the range; otherwise it stays, in the new range or not. So set the value afterwards.
    void setValueRange(int min, int max);
    /// Sets the value; one outside of the range changes nothing.
    void setValue(int v);
    /// The value.
    int value() const;

    /// Follows the mouse. Call it once per logic step.
    ///
    /// A drag is a press that begins on track or knob, edges included, and follows the pointer anywhere until
    /// it is let go. @return -1 when the value changed in this call, else 0.
    int poll();
    int pollInPanel() override; ///< poll().
    /// Left and Right change the value by 1, Page Up and Page Down by a tenth of the range; Home and End go
    /// to its ends.
    int handleKey(const KXUIKey& key) override;
    KXUIDescription description() const override; ///< With the value.
    /// Draws track and knob.
    void draw() override;

private:
    KX_INTERNAL void _layOutKnob();
    KX_INTERNAL void _dragTo(float mouseX);

    KXColor _knobFillColor;
    KXColor _knobPressedFillColor;
    KXColor _knobBorderColor;
    KXColor _trackFillColor;
    KXColor _trackBorderColor;
    KXRect _knob;
    KXRect _track;
    int32_t _pressed;
    int32_t _dragging, _changedByKey;
    int32_t _minimum;
    int32_t _maximum;
    int32_t _value;
};
