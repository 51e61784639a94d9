#pragma once

#include <Kobaltrix/KXInputEvents.h>

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

// What the events of a logic step say: the list of them, and what they make of everything that can be held.
// Events are taken in while the step reads them; its end forgets what belongs to this step alone.

/// What kind of thing can be held. Its numbers are those of the public headers.
enum class _KXHoldable { Key, Position, MouseButton, PadButton };

/// How often something went down and came up.
struct _KXEdges {
    int downs = 0, ups = 0;
    bool any() const { return downs || ups; }
};

/// Something that is held, or came up lately. Edges are those of this step, and those to be told in the next:
/// what comes after the step has read its events, because the game lets go of keys or closes a window.
struct _KXPress {
    _KXHoldable kind;
    int pad; ///< Of a pad's button, else 0.
    int number;
    KXKeyPosition position; ///< Of a key: what holds it, for layouts that change meanwhile.
    unsigned windowID;      ///< Where it went down.
    bool held;
    _KXEdges now, later;
    std::uint32_t step; ///< In which it went down last.
};

/// A finger that is on a touch screen, or was lifted lately.
struct _KXFingerOnScreen {
    std::int64_t device, id; ///< The platform's.
    int number;
    unsigned windowID;
    KXPoint point;
    float pressure;
    bool held;
    _KXEdges now, later;
};

/// Keys that change what others mean: either of each pair.
struct _KXModifiers {
    bool shift, control, alt, command;
};

class _KXUIWidget;

/// An event as widgets are told of it, which may be later than in its step.
struct _KXPastEvent {
    KXInputEvent event;
    _KXModifiers modifiers;               ///< That were held when it came.
    KXPoint pointer;                      ///< Where it was then, or where it went.
    bool isOfShortcut;                    ///< A text that is none.
    const _KXUIWidget* claimer = nullptr; ///< The one that lies on top where it came, to which alone it goes.
};

/// Where the pointer lies still, but for a hand that trembles.
struct _KXPointerRest {
    bool isBroken = true; ///< It has not been anywhere yet, or something was pressed since it came there.
    unsigned windowID = 0;
    KXPoint point = {0, 0};
    std::uint32_t step = 0; ///< In which it came there.
};

/// All of it.
struct _KXStepInput {
    std::vector<KXInputEvent> events,
        laterEvents; ///< Of this step, which the game may be walking; of the next.
    /// What came since the step before this one began, and between the two: widgets that hand the keyboard on
    /// after others were polled would lose the rest of the step otherwise.
    std::vector<_KXPastEvent> past;
    std::size_t pastBefore = 0;    ///< How many of them came before this step.
    std::uint64_t pastNumber = 0;  ///< Of the first one: they are counted as long as the program runs.
    std::deque<std::string> texts; ///< Of the past events; they stay where they are.
    std::vector<_KXPress> presses; ///< Few enough to be searched from one end to the other.
    std::vector<_KXFingerOnScreen> fingers;
    KXPoint wheel = {0, 0}, mouseMotion = {0, 0}; ///< Summed up over the step.
    unsigned keyboardWindowID = 0, mouseWindowID = 0;
    std::uint32_t step = 0; ///< Counts steps.
    _KXPointerRest rest;
    bool reads = false;    ///< Its events are being read.
    bool underWay = false; ///< Between steps nobody is told of anything.
};

/// Made when it is first used, kept: games may ask while the process ends.
_KXStepInput& _KXStep();

/// Takes an event over that changes nothing else; and one with its text, which may be no text but a shortcut.
void _KXTakeEvent(const KXInputEvent& event);
void _KXTakeEvent(KXInputEvent event, std::string_view text, bool isOfShortcut = false);

/// A key of the platform went down or came up, or repeats while it is held.
void _KXTakeKey(const KXInputEvent& key, int keycode);
/// A button of mouse or pad, as the event's type says. A press of what is held, and a release of what is not,
/// is left out.
void _KXTakeButton(const KXInputEvent& button);
void _KXTakeMouseMotion(const KXInputEvent& motion);
void _KXTakeWheel(const KXInputEvent& wheel);
/// A finger, by the platform's numbers. One that moves and was never seen has gone down.
void _KXTakeFinger(KXInputEvent finger, std::int64_t device, std::int64_t id);

/// A window has got the keyboard, or has lost it: then nothing stays held.
void _KXTakeFocus(unsigned windowID, std::uint32_t time, bool gained);
/// Lets go of what is held: the keys, the buttons of a pad, what was pressed in a window that closes, all of
/// it. Each is an edge of the step that is under way or comes next.
void _KXReleaseKeys();
void _KXReleasePad(int pad);
void _KXReleaseWindow(unsigned windowID);
void _KXReleaseEverything();

/// The press of something, null while it is up and has not been down in this step.
const _KXPress* _KXFindPress(_KXHoldable kind, int number, int pad = 0);
/// How often what has gone on since a step repeats in this one, going by the time of steps: first after
/// 500 ms, then every 33 ms.
int _KXRepeatsSince(std::uint32_t step);
/// The same for something that is held.
int _KXRepeats(const _KXPress& press);

/// Milliseconds, by the time of steps, that the pointer has been at rest; -1 if its rest is broken.
int _KXPointerRestTime();

/// Begins a step: what came since the last one belongs to it, and what is read now.
void _KXBeginInputStep();
/// The step has read its events. What comes from now on, because the game lets go of keys or closes a window,
/// is for the next one: the game may be walking the list.
void _KXTellInputStep();
/// Ends the step: its events and edges are told, what is held stays.
void _KXEndInputStep();
/// Forgets everything, as if nothing had ever happened.
void _KXForgetInput();

/// The modifiers that are held now.
_KXModifiers _KXHeldModifiers();
/// The number that the next event will have among the past ones.
inline std::uint64_t _KXNextEventNumber() { return _KXStep().pastNumber + _KXStep().past.size(); }

/// The number of the key that the platform's keycode stands for, 0 for none.
int _KXKeyNumberOf(int keycode);
