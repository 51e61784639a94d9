#include <Kobaltrix/KXUIToast.h>

#include "core/ground/LogicClock.h"
#include "ui/Caption.h"
#include "ui/Control.h"
#include "ui/Description.h"
#include "ui/Look.h"
#include "ui/WholePixels.h"
#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXMouse.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <deque>
#include <utility>

static constexpr unsigned fadeTime = 300;            // milliseconds
static constexpr float padding = 6, marginBelow = 6; // pixels

struct KXUIToast::State : _KXControl {
    explicit State(KXUIToast& of) : _KXControl(of), toast(of) {}

    struct Message {
        int number;
        unsigned milliseconds; ///< 0 for no end.
        _KXCaption text, action;
        unsigned age = 0;
        float textWidth = 0, actionWidth = 0; ///< In the font with a revision, 0 for not measured.
        unsigned fontRevision = 0;

        bool hasAction() const { return *action.text(); }
    };
    KXUIToast& toast;
    std::deque<Message> messages; ///< The first one is shown.
    int nextNumber = 0;
    int chosen = -1, chosenNow = -1;
    std::uint32_t now = _KXLogicCurrentTime; ///< Up to when messages have grown older.
    enum class Press { Nothing, Text, Action };
    Press press = Press::Nothing;

    bool hasAction() const { return !messages.empty() && messages.front().hasAction(); }
    void measure();
    KXRect actionRect() const;
    Press partUnderPointer() const;
    void end();
    void act();
    void grow();

protected:
    bool stopsTab() const override { return hasAction(); }
    void heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) override;
    void heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) override;
    void stepHeard() override;
};

/// What is shown, once.
void KXUIToast::State::measure() {
    Message& shown = messages.front();
    const KXFont* const font = toast._fontInUse();
    const unsigned revision = font ? font->_currentRevision() : 0;
    if (!font || shown.fontRevision == revision)
        return;
    shown.textWidth = _KXCaption::widthOf(*font, shown.text.text());
    shown.actionWidth = _KXCaption::widthOf(*font, shown.action.text());
    shown.fontRevision = revision;
}

KXRect KXUIToast::State::actionRect() const {
    if (!hasAction())
        return KXZeroRect;
    const auto [origin, size] = toast.messageRect();
    const float width = std::min(messages.front().actionWidth + 2 * padding, size.width);
    return {{origin.x + size.width - width, origin.y}, {width, size.height}};
}

KXUIToast::State::Press KXUIToast::State::partUnderPointer() const {
    if (!toast.mouseOver())
        return Press::Nothing;
    return _KXCovers(actionRect(), KXMousePoint) ? Press::Action : Press::Text;
}

/// The next message begins.
void KXUIToast::State::end() {
    press = Press::Nothing;
    if (!messages.empty())
        messages.pop_front();
    if (!hasAction())
        giveUpKeyboard();
}

void KXUIToast::State::act() {
    chosenNow = messages.front().number;
    changed = true;
    end();
}

// A press does not take the keyboard: the user may be typing.
void KXUIToast::State::heardMouse(const KXInputEvent& event, const _KXModifiers& modifiers) {
    if (event.button != KXMouseLeft || modifiers.control)
        return;
    if (event.type == KXInputEventMouseDown) {
        press = partUnderPointer();
        if (press != Press::Nothing)
            takePointer();
    } else if (event.type == KXInputEventMouseUp && hasPointer() && !messages.empty()) {
        const Press pressed = std::exchange(press, Press::Nothing);
        if (pressed == Press::Nothing || partUnderPointer() != pressed)
            return;
        pressed == Press::Action ? act() : end();
    }
}

void KXUIToast::State::heardKey(const KXInputEvent& key, const _KXModifiers& modifiers) {
    if (key.type != KXInputEventKeyDown || modifiers.alt || !hasAction())
        return;
    if (key.key == KXKeyReturn || key.key == KXKeyPadEnter || key.key == KXKeySpace)
        act();
    else if (key.key == KXKeyEscape)
        end();
}

// One message may end in a step; what is left of the time is not the next one's, who waits for nobody.
void KXUIToast::State::grow() {
    const unsigned passed = _KXLogicCurrentTime - std::exchange(now, _KXLogicCurrentTime);
    if (messages.empty() || toast.mouseOver() || hasPointer() || hasKeyboard())
        return;
    Message& shown = messages.front();
    shown.age = passed < UINT_MAX - shown.age ? shown.age + passed : UINT_MAX;
    if (shown.milliseconds > 0 && shown.age >= shown.milliseconds)
        end();
}

void KXUIToast::State::stepHeard() {
    grow();
    chosen = std::exchange(chosenNow, -1);
}

KXUIToast::KXUIToast() : _state(std::make_unique<State>(*this)) {}

KXUIToast::~KXUIToast() = default;

int KXUIToast::show(const char* text, const KXUIToastOptions& options) {
    if (!text)
        return -1;
    State& state = *_state;
    if (state.messages.empty())
        state.now = _KXLogicCurrentTime;
    state.messages.push_back({state.nextNumber, static_cast<unsigned>(std::max(0, options.milliseconds)),
                              _KXCaption(text), _KXCaption(options.action ? options.action : "")});
    const int number = state.nextNumber;
    state.nextNumber = number == INT_MAX ? 0 : number + 1;
    return number;
}

int KXUIToast::current() const { return _state->messages.empty() ? -1 : _state->messages.front().number; }

const char* KXUIToast::text() const {
    return _state->messages.empty() ? "" : _state->messages.front().text.text();
}

int KXUIToast::count() const { return static_cast<int>(_state->messages.size()); }

void KXUIToast::dismiss() { _state->end(); }

void KXUIToast::clear() {
    _state->messages.clear();
    _state->end();
}

int KXUIToast::poll() { return _state->poll(); }

int KXUIToast::chosen() const { return _state->chosen; }

KXRect KXUIToast::messageRect() const {
    if (_state->messages.empty())
        return KXZeroRect;
    _state->measure();
    const State::Message& shown = _state->messages.front();
    const float text = shown.textWidth + 2 * padding,
                action = shown.hasAction() ? shown.actionWidth + 2 * padding : 0,
                height = _idealSizeForText("").height + 2 * padding;
    const auto [origin, size] = rect();
    const KXSize box = {std::min(size.width, text + action), height};
    return {
        {std::floor(origin.x + (size.width - box.width) / 2), origin.y + size.height - height - marginBelow},
        box};
}

int KXUIToast::containsPoint(KXPoint point) const { return _KXCovers(messageRect(), point) ? -1 : 0; }

int KXUIToast::mouseOver() { return _takesInput() && !_mouseIsElsewhere() ? containsPoint(KXMousePoint) : 0; }

void KXUIToast::setColors(const KXUIColors& colors) { _state->colors = colors; }

void KXUIToast::draw() {
    const _KXWidgetDrawing drawing(*this);
    if (!drawing || _state->messages.empty())
        return;
    State& state = *_state;
    State::Message& shown = state.messages.front();
    if (shown.milliseconds > 0 && shown.age + fadeTime > shown.milliseconds)
        _KXWidgetOpacity *=
            std::min(1.0f, static_cast<float>(shown.milliseconds - shown.age) / static_cast<float>(fadeTime));
    const KXRect box = messageRect(), action = state.actionRect();
    _KXDrawPart(KXUIPartPanel, box, KXUIPartNormal, state.colors);
    shown.text.drawLineLaidOut(_fontInUse(),
                               {box.origin, {box.size.width - action.size.width, box.size.height}}, padding,
                               _KXPartText(KXUIPartPanel, KXUIPartNormal, state.colors), KXTextAlignLeft);
    if (!shown.hasAction())
        return;
    const unsigned states = state.press == State::Press::Action ? KXUIPartPressed : KXUIPartNormal;
    _KXDrawPart(KXUIPartButton, action, states, state.colors);
    shown.action.drawLineLaidOut(_fontInUse(), action, 0, _KXPartText(KXUIPartButton, states, state.colors),
                                 KXTextAlignCentre);
    state.drawRing();
}

int KXUIToast::pollInPanel() { return poll(); }
int KXUIToast::takesKeyboard() const { return _state->hasAction() ? -1 : 0; }
KXRect KXUIToast::focusRect() const { return _state->actionRect(); }
_KXFocus* KXUIToast::keyboardPart() { return _state.get(); }

KXUIDescription KXUIToast::description() const {
    KXUIDescription said = _described("message", text());
    if (_state->hasAction())
        said.value = _KXSpokenText(_state->messages.front().action.text());
    return said;
}
