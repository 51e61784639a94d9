#pragma once

#include "Handles.h"
#include "Paint.h"
#include "Zoom.h"

#include <Kobaltrix/KXUIWidget.h>

/// Whether a key is the plus.
bool isPlus(int key);
/// The way that an arrow points, (0, 0) for other keys.
KXPoint wayOf(int key);

/// A widget that shows a picture, zoomed and moved by mouse and keys. Views derive from it and say what they
/// draw and what the left button and keys do.
///
/// The wheel zooms to the pointer, and so do + and - to the middle; the middle and right button, Space with
/// the left one, and Control with the arrows move the picture.
class PictureView : public _KXUIWidget {
public:
    float zoom() const { return _zoom.scale(); }
    void zoomBy(int steps);
    void showActualSize();
    /// The whole picture, from the next time that there is room.
    void showWhole() { _showsWhole = true; }

    // What a panel asks of it.
    int pollInPanel() override;
    int handleKey(const KXUIKey& key) override;
    void handleMouse(const KXUIMouse& mouse) override;
    int takesWheel() const override { return -1; }
    void draw() override;

protected:
    /// What there is to be seen, in pixels of the picture.
    virtual Area extent() const = 0;
    /// What is said where there is nothing to be seen.
    virtual const char* hint() const = 0;
    /// Between background and lines.
    virtual void drawPicture() = 0;
    /// Above all else.
    virtual void drawMarks() = 0;
    /// Lines between pixels are drawn where these are large.
    virtual bool hasPixelLines() const { return false; }
    /// What is below the picture; without opacity a checkerboard.
    virtual KXColor ground() const { return {0, 0, 0, 0}; }

    /// The left button moves the picture, too.
    virtual bool leftPans() const { return false; }

    /// The left button: a press, what follows until it is let go, and that. Places are of the picture.
    virtual void pressed(KXPoint place, const KXUIMouse& mouse) = 0;
    virtual void dragged(KXPoint place) = 0;
    virtual void released(KXPoint place) = 0;
    /// The drag ends as if it had not been.
    virtual void abandoned() = 0;
    virtual KXCursor cursorAt(KXPoint place) = 0;
    /// A key that zooms and moves nothing. @return as handleKey().
    virtual int keyPressed(const KXUIKey& key) = 0;

    /// Marks the step as one in which the user did something.
    void act() { _hasActed = true; }
    /// Whether the left button drags something.
    bool isDragging() const { return _drag == Drag::Tool; }
    /// Whether the pointer is over it, and which place of the picture it is on.
    bool hasPointer() const { return _hasPointer; }
    KXPoint pointerPlace() const { return _zoom.toPicture(rect(), _pointer); }

    KXRect seen(const Area& area) const { return _zoom.fromPicture(rect(), area); }
    KXPoint placeAt(KXPoint point) const { return _zoom.toPicture(rect(), point); }
    /// Moves the picture as arrows do.
    void pan(KXPoint way);
    void reveal(const Area& area) { _zoom.reveal(rect(), area); }

private:
    enum class Drag { None, Pan, Tool };

    void showWholeIfAsked();
    void pressedButton(const KXUIMouse& mouse);
    void endDrag(bool isAbandoned);
    void turnWheel(float notches);
    void showCursor();
    void drawBackground(const KXUIPalette& palette);
    void drawPixelLines();

    Zoom _zoom;
    bool _showsWhole = true, _hasActed = false, _hasPointer = false, _hasCursor = false;
    Drag _drag = Drag::None;
    int _button = 0; // that drags
    KXPoint _pointer = {0, 0};
    float _notches = 0; // less than one
    KXCursor _cursor = KXCursorArrow;
    Checkers _checkers;
};
