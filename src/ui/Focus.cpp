#include "ui/Focus.h"

#include "input/KXMouse.h"
#include "input/TextInput.h"
#include "ui/WholePixels.h"

#include <Kobaltrix/KXKeyboard.h>

#include <algorithm>
#include <utility>

namespace {
struct Owners {
    _KXFocus* keyboard = nullptr;
    _KXFocus* pointer = nullptr;
    std::uint64_t keyboardTaken = 0; // the number of the event behind the one in which it was taken,
    std::uint64_t pointerTaken = 0;
    std::uint64_t keyboardFrom = 0;  // and of the first whose keys nobody was told of
    std::uint64_t keyboardFreed = 0; // the number behind the one in which it was left to nobody
    bool keyboardIsBorrowed = false, lenderHadItByKeyboard = false;
    _KXFocus* lender = nullptr; // who had it before
    // Stops of Tab: the one that is polled or was polled last, and the one before it.
    _KXFocus *stop = nullptr, *stopBefore = nullptr;
    bool keyboardIsOnItsWay = false; // to the next of them

    std::uint64_t hearing = 0;  // number behind the event that is being heard, 0 while none is
    bool composing = false;     // an input method is at work,
    std::uint64_t composed = 0; // and was in the step with one less than this number

    std::uint32_t secretStep = 0; // one more than that in which a secret widget was polled last

    const _KXUIWidget* pointerClaimer = nullptr; // in a step
    std::uint32_t pointerClaimed = 0;
    const _KXFocus::Turn* turn = nullptr; // the innermost

    int repeatingKey = 0;                           // that the owner was told of last, 0 for none
    std::uint32_t repeatStep = 0, repeatedStep = 0; // when it went down, and when it was repeated last
};

// The pointer's variables for as long as a widget hears of an event after which the pointer moved on.
class PointerWhere {
public:
    explicit PointerWhere(const KXPoint* place)
        : _moved(place), _x(KXMouseX), _y(KXMouseY),
          _point(KXMousePoint), _relative{KXMouseXRelative, KXMouseYRelative}, _motion(KXMousePointRelative) {
        if (place)
            _KXSetMousePlace(*place, _motion);
    }
    ~PointerWhere() {
        if (!_moved)
            return;
        KXMouseX = _x, KXMouseY = _y, KXMousePoint = _point;
        KXMouseXRelative = _relative[0], KXMouseYRelative = _relative[1], KXMousePointRelative = _motion;
    }
    PointerWhere(const PointerWhere&) = delete;
    PointerWhere& operator=(const PointerWhere&) = delete;

private:
    bool _moved;
    int _x, _y;
    KXPoint _point;
    int _relative[2];
    KXPoint _motion;
};

bool isOfMouse(const KXInputEvent& event) {
    return event.type >= KXInputEventMouseMoved && event.type <= KXInputEventMouseWheel;
}
} // namespace

static constinit Owners owners;

// The number behind the event that is being heard, or behind all there are.
static std::uint64_t here() { return owners.hearing ? owners.hearing : _KXNextEventNumber(); }

static void letGoOfKeyboard() {
    owners.keyboard = nullptr;
    owners.keyboardIsOnItsWay = owners.composing = owners.keyboardIsBorrowed = false;
    owners.lender = nullptr;
    owners.composed = 0;
    owners.repeatingKey = 0;
    owners.keyboardFreed = here();
}

_KXFocus::_KXFocus()
    : _heard(_KXNextEventNumber()), _lentUntil(0), _polledStep(_KXStep().step), _attendedStep(_polledStep) {}

_KXFocus::~_KXFocus() {
    if (hasKeyboard()) {
        letGoOfKeyboard();
        _KXEndTextInput();
    }
    for (_KXFocus** owner : {&owners.pointer, &owners.stop, &owners.stopBefore, &owners.lender})
        if (*owner == this)
            *owner = nullptr;
}

_KXFocus* _KXFocus::keyboardOwner() { return owners.keyboard; }

void _KXFocus::takeKeyboard() {
    const std::uint64_t from = here();
    if (hasKeyboard()) {
        if (owners.hearing && std::exchange(owners.keyboardIsOnItsWay, false))
            owners.keyboardFrom = from;
        return;
    }
    if (owners.hearing && from < owners.keyboardTaken) { // another has it since, who was polled before
        _lentUntil = owners.keyboardTaken;
        return;
    }
    if (!owners.hearing)
        _heard = from;
    takeKeyboard(from);
}

void _KXFocus::takeKeyboard(std::uint64_t from) {
    while (owners.keyboard && owners.keyboard != this) // it may hear only now that it has handed it on
        owners.keyboard->giveUpKeyboard();
    owners.keyboardTaken = owners.keyboardFrom = from;
    owners.keyboardIsOnItsWay = false;
    if (std::exchange(owners.keyboard, this) == this)
        return;
    arrivedByKeyboard = false;
    _attendedStep = _KXStep().step;
    if (takesText())
        _KXBeginTextInput();
    keyboardTaken();
}

void _KXFocus::giveUpKeyboard() {
    _lentUntil = 0;
    if (!hasKeyboard() || (owners.hearing && owners.hearing < owners.keyboardTaken))
        return;
    hear(here());
    if (!hasKeyboard())
        return;
    letGoOfKeyboard();
    _KXEndTextInput();
    keyboardLost();
}

void _KXFocus::borrowKeyboard() {
    if (hasKeyboard())
        return;
    _KXFocus* const lender = owners.keyboardIsBorrowed ? owners.lender : owners.keyboard;
    const bool byKeyboard =
        owners.keyboardIsBorrowed ? owners.lenderHadItByKeyboard : lender && lender->arrivedByKeyboard;
    takeKeyboard();
    if (!hasKeyboard())
        return;
    owners.keyboardIsBorrowed = true;
    owners.lender = lender;
    owners.lenderHadItByKeyboard = byKeyboard;
}

void _KXFocus::returnKeyboard() {
    if (!hasKeyboard())
        return;
    _KXFocus* const lender = owners.lender;
    const bool byKeyboard = owners.lenderHadItByKeyboard;
    giveUpKeyboard();
    if (!lender || owners.keyboard)
        return;
    lender->takeKeyboard();
    lender->arrivedByKeyboard = byKeyboard;
}

bool _KXFocus::isBehindBorrower() const {
    return owners.keyboardIsBorrowed && !hasKeyboard() &&
           (!windowID || !owners.keyboard->windowID || windowID == owners.keyboard->windowID);
}

void _KXFocus::leaveOut() {
    skipUnheard();
    if (hasKeyboard())
        owners.keyboardFrom = _KXNextEventNumber();
    giveUpKeyboard();
    if (owners.pointer == this)
        owners.pointer = nullptr;
}

void _KXFocus::pollTabStop() {
    if (_KXIsElsewhere(windowID, KXKeyboardWindowID))
        return;
    owners.stopBefore = std::exchange(owners.stop, this);
    if (!owners.keyboardIsOnItsWay)
        return;
    hear(owners.keyboardFrom); // of the mouse before the Tab
    if (!owners.keyboardIsOnItsWay)
        return;
    takeKeyboard(owners.keyboardFrom); // with what was typed behind it
    arrivedByKeyboard = true;
    tabArrived();
}

void _KXFocus::sendKeyboardOn() {
    owners.keyboardIsOnItsWay = true;
    owners.repeatingKey = 0;
}

void _KXFocus::sendKeyboardBack() {
    if (!owners.stopBefore)
        return;
    owners.stopBefore->hear(here()); // what came before, if it is yet to be polled
    owners.stopBefore->takeKeyboardByKey();
}

void _KXFocus::takeKeyboardByKey() {
    takeKeyboard();
    arrivedByKeyboard = true;
    tabArrived();
}

void _KXFocus::hearSoFar() { hear(here()); }

bool _KXFocus::inputMethodIsAtWork() {
    return owners.composing || owners.composed == std::uint64_t{_KXStep().step} + 1;
}

static void noteComposing(bool composing) {
    if (composing || owners.composing)
        owners.composed = std::uint64_t{_KXStep().step} + 1;
    owners.composing = composing;
}

bool _KXFocus::mayHearKey(std::uint64_t number) const {
    return number < _lentUntil ||
           (hasKeyboard() && number >= owners.keyboardFrom && !owners.keyboardIsOnItsWay);
}

void _KXFocus::hearKeyboard(const _KXPastEvent& past) {
    const KXInputEvent& event = past.event;
    switch (event.type) {
    case KXInputEventText:
        if (past.isOfShortcut)
            return;
        noteComposing(false);
        heardComposition("");
        heardText(event.text);
        return;
    case KXInputEventComposition:
        noteComposing(*event.text);
        heardComposition(event.text);
        return;
    case KXInputEventKeyDown:
        if (owners.composing)
            noteComposing(true);
        if (inputMethodIsAtWork() || (filter && filter->keepsKey(event, past.modifiers)))
            return;
        if (passesTabOn && event.key == KXKeyTab && !past.modifiers.alt)
            return past.modifiers.shift ? sendKeyboardBack() : sendKeyboardOn();
        owners.repeatingKey = event.key;
        owners.repeatStep = owners.repeatedStep = _KXStep().step;
        heardKey(event, past.modifiers);
        return;
    default:
        return;
    }
}

// Where the pointer moved on after the event, it is put back for it.
void _KXFocus::hearMouse(const _KXPastEvent& past, bool pointerMovedOn) {
    const PointerWhere where(pointerMovedOn ? &past.pointer : nullptr);
    heardMouse(past.event, past.modifiers);
    if (past.event.type == KXInputEventMouseUp && past.event.button == KXMouseLeft && owners.pointer == this)
        owners.pointer = nullptr;
}

// Where the pointer came to rest: the number of its last motion, 0 if it has not moved.
static std::uint64_t lastMotion() {
    const auto& past = _KXStep().past;
    for (std::size_t i = past.size(); i-- > 0;)
        if (past[i].event.type == KXInputEventMouseMoved)
            return _KXStep().pastNumber + i;
    return 0;
}

// A number of a past event that is at least as late as @a number.
static std::uint64_t keptFrom(std::uint64_t number) { return std::max(number, _KXStep().pastNumber); }

std::uint64_t _KXFocus::firstUnheard() {
    skipUnpolled();
    return hasKeyboard() ? keptFrom(std::min(_heard, owners.keyboardFrom)) : keptFrom(_heard);
}

// The events before the next are told while this lives.
namespace {
class Hearing {
public:
    explicit Hearing(std::uint64_t next) : _outer(std::exchange(owners.hearing, next)) {}
    ~Hearing() { owners.hearing = _outer; }
    Hearing(const Hearing&) = delete;
    Hearing& operator=(const Hearing&) = delete;

private:
    std::uint64_t _outer;
};
} // namespace

void _KXFocus::hear(std::uint64_t end) {
    const std::uint64_t moved = lastMotion();
    for (std::uint64_t number = firstUnheard(); number < end; ++number)
        if (number >= _KXStep().pastNumber) // a game that is called meanwhile may forget it
            hearEvent(number, number < moved);
}

void _KXFocus::hearEvent(std::uint64_t number, bool pointerMovedOn) {
    const _KXPastEvent past = _KXStep().past[number - _KXStep().pastNumber];
    const Hearing hearing(number + 1);
    const bool isNew = number >= _heard, mayHear = mayHearKey(number);
    _heard = std::max(_heard, number + 1);
    if (hasKeyboard() && !owners.keyboardIsOnItsWay)
        owners.keyboardFrom = std::max(owners.keyboardFrom, number + 1);
    if (windowID && past.event.windowID && past.event.windowID != windowID)
        return;
    if (isOfMouse(past.event)) {
        if (isNew && !isAnothers(past.claimer))
            hearMouse(past, pointerMovedOn);
        return;
    }
    if (isNew)
        overheard(past.event, past.modifiers);
    if (mayHear)
        hearKeyboard(past);
    else if (isNew && nobodyHears() && number >= owners.keyboardFreed &&
             past.event.type == KXInputEventKeyDown)
        heardKeyOfNobody(past.event, past.modifiers);
}

bool _KXFocus::needsKey(int key, const _KXModifiers& modifiers) const {
    const bool isFunctionKey = (key >= KXKeyF1 && key <= KXKeyF15) || (key >= KXKeyF16 && key <= KXKeyF24);
    return !isFunctionKey && !modifiers.control && !modifiers.command && !modifiers.alt;
}

bool _KXFocus::nextTypingMayBeSecret() {
    if (owners.keyboard && owners.keyboard->isSecret())
        return true;
    const _KXStepInput& step = _KXStep();
    if (owners.secretStep == 0 || step.step + 1 - owners.secretStep > 1)
        return false;
    return std::any_of(step.past.begin() + static_cast<std::ptrdiff_t>(step.pastBefore), step.past.end(),
                       [](const _KXPastEvent& past) {
                           return past.event.type == KXInputEventMouseDown ||
                                  (past.event.type == KXInputEventKeyDown && past.event.key == KXKeyTab);
                       });
}

void _KXFocus::hear() {
    if (isSecret())
        owners.secretStep = _KXStep().step + 1;
    if (hasKeyboard() && takesText())
        _KXKeepTextInput();
    hear(_KXNextEventNumber());
    if (owners.pointer == this && !_KXMouseButtonLeft) // let go of while this was not polled
        owners.pointer = nullptr;
    hearRepeats();
}

// Whoever has the keyboard and is not polled, such as a button of a dialog that is over, keeps it from
// nobody.
bool _KXFocus::nobodyHears() {
    return !owners.keyboard || _KXStep().step - owners.keyboard->_attendedStep > 1;
}

void _KXFocus::skipUnpolled() {
    const _KXStepInput& step = _KXStep();
    _attendedStep = step.step;
    if (step.step - std::exchange(_polledStep, step.step) <= 1)
        return;
    const std::uint64_t latest = step.pastNumber + step.pastBefore;
    _heard = std::max(_heard, latest);
    if (hasKeyboard())
        owners.keyboardFrom = std::max(owners.keyboardFrom, latest);
}

void _KXFocus::hearRepeats() {
    if (!hasKeyboard() || !owners.repeatingKey)
        return;
    if (!KXKeyHeld(owners.repeatingKey) || inputMethodIsAtWork() ||
        _KXIsElsewhere(windowID, KXKeyboardWindowID)) {
        owners.repeatingKey = 0;
        return;
    }
    KXInputEvent key = {};
    key.type = KXInputEventKeyRepeat;
    key.key = owners.repeatingKey;
    if (std::exchange(owners.repeatedStep, _KXStep().step) == _KXStep().step)
        return;
    for (int times = _KXRepeatsSince(owners.repeatStep); times > 0 && hasKeyboard(); --times)
        heardKey(key, _KXHeldModifiers());
}

void _KXFocus::takePointer() {
    if (owners.hearing < owners.pointerTaken)
        return;
    owners.pointer = this;
    owners.pointerTaken = owners.hearing;
}

_KXFocus::Turn::Turn(const _KXUIWidget& whose, const KXRect* view)
    : _whose(&whose), _view(view), _outer(std::exchange(owners.turn, this)) {}
_KXFocus::Turn::~Turn() { owners.turn = _outer; }

bool _KXFocus::isAnothers(const _KXUIWidget* claimer) {
    for (const Turn* turn = owners.turn; turn && claimer; turn = turn->_outer)
        if (turn->_whose == claimer)
            return false;
    return claimer;
}

void _KXFocus::claimPointer(const _KXUIWidget& widget) {
    _KXStepInput& step = _KXStep();
    if (owners.hearing > step.pastNumber) {
        _KXPastEvent& past = step.past[owners.hearing - 1 - step.pastNumber];
        if (!isAnothers(past.claimer))
            past.claimer = &widget;
    }
    if (step.step == owners.pointerClaimed && isAnothers(owners.pointerClaimer))
        return;
    owners.pointerClaimer = &widget;
    owners.pointerClaimed = step.step;
}

void _KXFocus::forgetClaims(const _KXUIWidget& widget) {
    if (owners.pointerClaimer == &widget)
        owners.pointerClaimer = nullptr;
    for (_KXPastEvent& past : _KXStep().past)
        if (past.claimer == &widget)
            past.claimer = nullptr;
}

bool _KXFocus::pointerIsKeptFrom(const _KXUIWidget& widget) {
    for (const Turn* turn = owners.turn; turn; turn = turn->_outer)
        if (turn->_view && !_KXContains(*turn->_view, KXMousePoint))
            return true;
    return !owners.hearing && owners.pointerClaimer != &widget &&
           _KXStep().step - owners.pointerClaimed <= 1 && isAnothers(owners.pointerClaimer);
}

bool _KXFocus::hasPointer() const { return owners.pointer == this && (owners.hearing || _KXMouseButtonLeft); }
