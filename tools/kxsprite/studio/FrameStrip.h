#pragma once

#include "Paint.h"
#include "Player.h"
#include "Session.h"
#include "Sheet.h"

#include <Kobaltrix/KXCursor.h>
#include <Kobaltrix/KXUIWidget.h>

#include <memory>

/// The frames of the chosen animation side by side, with numbers and durations.
///
/// A click chooses a frame, with Control one more, with Shift all up to it. Chosen ones are dragged to
/// another place; dragging the right edge of a frame, or the wheel with Control, changes durations; the wheel
/// scrolls. By keys: arrows, Page Up and Down, Home and End choose, with Shift also all between; Alt with
/// arrows moves the chosen ones, + and - change their duration. Whatever there is to scroll, only what is
/// seen costs anything.
class FrameStrip : public _KXUIWidget {
public:
    FrameStrip(Session& session, Sheet& sheet, const Player& player)
        : _session(session), _sheet(sheet), _player(player) {}

    /// Of a logic step of the game: durations are shown in them.
    void setStepMilliseconds(int milliseconds) { _stepMilliseconds = milliseconds; }

    // What a panel asks of it.
    int pollInPanel() override;
    int handleKey(const KXUIKey& key) override;
    void handleMouse(const KXUIMouse& mouse) override;
    int takesWheel() const override { return -1; }
    KXUIDescription description() const override;
    void draw() override;

private:
    enum class Act { None, Click, Move, Duration, Scroll };

    int count() const;
    const Frame& frame(int i) const;
    float itemWidth() const;
    float contentWidth() const { return itemWidth() * static_cast<float>(count()); }
    KXRect item(int i) const;
    KXRect bar() const;
    KXRect knob() const;
    int itemAt(float x) const;
    int gapAt(float x) const;
    bool isAtEdge(KXPoint point) const;
    void scrollTo(float offset);
    void reveal(int i);
    void follow();
    int shown() const;

    void pressed(const KXUIMouse& mouse);
    void pressedItem(int i, const KXUIMouse& mouse);
    void dragged(KXPoint point);
    void endDrag(bool isAbandoned);
    void turnWheel(const KXUIMouse& mouse);
    void showCursor();

    void choose(int i, bool extends);
    void toggle(int i);
    void setDuration(int duration, Join join);
    int arrowPressed(const KXUIKey& key, int by);

    void drawItem(int i, const KXUIPalette& palette);
    void drawPicture(const Area& bounds, const KXRect& room);
    void drawBar(const KXUIPalette& palette);

    Session& _session;
    Sheet& _sheet;
    const Player& _player;
    int _stepMilliseconds = 16;

    float _offset = 0; // that is scrolled, points
    Act _act = Act::None;
    KXPoint _pointer = {0, 0}, _from = {0, 0}; // now, and where the drag began
    int _pressed = -1;                         // frame
    int _before = 0;                           // the duration that is dragged,
    float _offsetBefore = 0;                   // and how far it was scrolled
    bool _hasBegun = false, _hasActed = false, _hasCursor = false;
    int _anchor = 0; // the end of what Shift chooses
    float _notches = 0;
    int _turned = -1;                 // the frame whose duration the wheel has changed,
    std::uint64_t _turnedVersion = 0; // and the session after that
    KXCursor _cursor = KXCursorArrow;

    int _followed = -1; // the frame that was on show last
    std::shared_ptr<const NamedAnimation> _followedIn;
    Checkers _checkers;
};
