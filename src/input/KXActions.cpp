#include <Kobaltrix/KXActions.h>

#include "core/ground/ErrorSlot.h"
#include "input/InputText.h"
#include "input/StepInput.h"
#include "util/WholeFile.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

static constexpr std::size_t mostActions = 256, mostInputs = 16, longestName = 63;
static constexpr std::size_t largestFile = 1 << 20; // more than all of that takes

namespace {
struct Action {
    std::string name;
    std::vector<KXInput> inputs;
};

// Why something cannot be done, null if it can.
using Reason = const char*;

bool same(const KXInput& a, const KXInput& b) { return KXInputsAreEqual(a, b) != 0; }

bool meets(int wantedPad, int pad) { return wantedPad == KXAnyPad || wantedPad == pad; }

// Whether a press can be one of both.
bool overlap(const KXInput& a, const KXInput& b) {
    return a.kind == b.kind && a.number == b.number && (meets(a.pad, b.pad) || meets(b.pad, a.pad));
}

// A press of anything is the input's if it is of this kind.
_KXHoldable holdableOf(KXInputKind kind) {
    switch (kind) {
    case KXInputKindKey:
        return _KXHoldable::Key;
    case KXInputKindPosition:
        return _KXHoldable::Position;
    case KXInputKindMouseButton:
        return _KXHoldable::MouseButton;
    default:
        return _KXHoldable::PadButton;
    }
}

bool isOf(const _KXPress& press, const KXInput& input) {
    return press.kind == holdableOf(input.kind) && press.number == input.number &&
           meets(input.pad, press.pad);
}

bool isHeld(const KXInput& input) {
    return std::ranges::any_of(_KXStep().presses,
                               [&](const _KXPress& press) { return press.held && isOf(press, input); });
}

// How many things held the input when the step began: more than one for any pad.
int heldBefore(const KXInput& input) {
    int held = 0;
    for (const _KXPress& press : _KXStep().presses)
        if (isOf(press, input))
            held += press.held - press.now.downs + press.now.ups - press.later.downs + press.later.ups;
    return held;
}

// And how many after an event, if there were so many before it. A key that lies in two places is let go by
// whichever comes up first.
int heldAfter(const KXInputEvent& event, const KXInput& input, int held) {
    const auto concerns = [&](KXInputKind kind, int number) {
        return input.kind == kind && input.number == number;
    };
    switch (event.type) {
    case KXInputEventKeyDown:
    case KXInputEventKeyUp:
        return concerns(KXInputKindKey, event.key) || concerns(KXInputKindPosition, event.position)
                   ? event.type == KXInputEventKeyDown
                   : held;
    case KXInputEventMouseDown:
    case KXInputEventMouseUp:
        return concerns(KXInputKindMouseButton, event.button) ? event.type == KXInputEventMouseDown : held;
    case KXInputEventPadDown:
    case KXInputEventPadUp:
        if (concerns(KXInputKindPadButton, event.button) && meets(input.pad, event.pad))
            return held + (event.type == KXInputEventPadDown ? 1 : -1);
        return held;
    default:
        return held;
    }
}

struct Edges {
    int downs = 0, ups = 0;
};

float valueOf(const KXInput& input) {
    if (input.kind == KXInputKindPadButton)
        return KXPadValue(input.pad, input.number);
    return isHeld(input) ? 1.0f : 0.0f;
}

// The edges of "any of them is held", found by going through the step as it happened.
Edges edgesOf(const std::vector<KXInput>& inputs) {
    Edges edges;
    std::array<int, mostInputs> held;
    int sum = 0;
    for (std::size_t i = 0; i < inputs.size(); ++i)
        sum += held[i] = heldBefore(inputs[i]);
    for (const KXInputEvent& event : KXInputEvents()) {
        const int before = sum;
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            const int now = heldAfter(event, inputs[i], held[i]);
            sum += now - held[i];
            held[i] = now;
        }
        edges.downs += !before && sum;
        edges.ups += before && !sum;
    }
    return edges;
}
} // namespace

struct KXActions::State {
    std::vector<Action> actions;

    std::vector<Action>::iterator find(std::string_view name) {
        return std::ranges::find(actions, name, &Action::name);
    }
    /// Null, with a text in the error slot, if there is none.
    Action* existing(const char* name) {
        const auto found = find(name ? name : "");
        if (found != actions.end())
            return &*found;
        _KXReportError("There is no action \"%s\"", name ? name : "");
        return nullptr;
    }
    /// Makes the action if it does not exist.
    Reason make(std::string_view name);
    Reason bind(std::string_view name, const KXInput& input);
    Reason readLine(std::string_view line, std::set<std::string>& named);
};

Reason KXActions::State::make(std::string_view name) {
    if (find(name) != actions.end())
        return nullptr;
    if (!_KXIsPlainText(name) || name.size() > longestName || name.front() == '#' ||
        name.find(':') != std::string_view::npos)
        return "the name of an action cannot be used";
    if (actions.size() == mostActions)
        return "there are too many actions";
    actions.push_back({std::string(name), {}});
    return nullptr;
}

Reason KXActions::State::bind(std::string_view name, const KXInput& input) {
    if (_KXInputToText(input).empty())
        return "this is no input";
    if (const Reason reason = make(name))
        return reason;
    std::vector<KXInput>& inputs = find(name)->inputs;
    if (std::ranges::any_of(inputs, [&](const KXInput& bound) { return same(bound, input); }))
        return nullptr;
    if (inputs.size() == mostInputs)
        return "an action has too many inputs";
    inputs.push_back(input);
    return nullptr;
}

static std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// The first line that names an action makes it forget what it was bound to.
Reason KXActions::State::readLine(std::string_view line, std::set<std::string>& named) {
    line = trimmed(line);
    if (line.empty() || line.front() == '#')
        return nullptr;
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos)
        return "there is no colon";
    const std::string_view name = trimmed(line.substr(0, colon)), input = trimmed(line.substr(colon + 1));
    if (const Reason reason = make(name))
        return reason;
    if (named.emplace(name).second)
        find(name)->inputs.clear();
    return input.empty() ? nullptr : bind(name, _KXInputFromText(input));
}

KXActions::KXActions() : _state(std::make_unique<State>()) {}
KXActions::~KXActions() = default;
KXActions::KXActions(const KXActions& other) : _state(std::make_unique<State>(*other._state)) {}
KXActions& KXActions::operator=(const KXActions& other) {
    *_state = *other._state;
    return *this;
}

int KXActions::bind(const char* action, KXInput input) {
    const Reason reason = _state->bind(action ? action : "", input);
    if (reason)
        _KXReportError("\"%s\": %s", action ? action : "", reason);
    return reason ? 0 : -1;
}

int KXActions::unbind(const char* action) {
    Action* const found = _state->existing(action);
    if (found)
        found->inputs.clear();
    return found ? -1 : 0;
}

int KXActions::unbind(const char* action, KXInput input) {
    Action* const found = _state->existing(action);
    const auto isMeant = [&](const KXInput& bound) { return overlap(bound, input); };
    return found && std::erase_if(found->inputs, isMeant) ? -1 : 0;
}

int KXActions::count() const { return static_cast<int>(_state->actions.size()); }

const char* KXActions::action(int index) const {
    return index >= 0 && index < count() ? _state->actions[static_cast<std::size_t>(index)].name.c_str()
                                         : nullptr;
}

KXInputList KXActions::inputs(const char* action) const {
    const Action* const found = _state->existing(action);
    return found ? KXInputList{found->inputs.data(), static_cast<int>(found->inputs.size())} : KXInputList{};
}

const char* KXActions::actionOf(KXInput input) const {
    for (const Action& action : _state->actions)
        if (std::ranges::any_of(action.inputs, [&](const KXInput& bound) { return overlap(bound, input); }))
            return action.name.c_str();
    return nullptr;
}

int KXActions::held(const char* action) const {
    const Action* const found = _state->existing(action);
    return found && std::ranges::any_of(found->inputs, isHeld) ? -1 : 0;
}

int KXActions::wentDown(const char* action) const {
    const Action* const found = _state->existing(action);
    return found ? edgesOf(found->inputs).downs : 0;
}

int KXActions::wentUp(const char* action) const {
    const Action* const found = _state->existing(action);
    return found ? edgesOf(found->inputs).ups : 0;
}

float KXActions::value(const char* action) const {
    float largest = 0;
    if (const Action* const found = _state->existing(action))
        for (const KXInput& input : found->inputs)
            largest = std::max(largest, valueOf(input));
    return largest;
}

int KXActions::save(const char* path) const {
    std::string text = "# What each action is bound to, one input a line.\n";
    for (const Action& action : _state->actions) {
        for (const KXInput& input : action.inputs)
            text += action.name + ": " + _KXInputToText(input) + '\n';
        if (action.inputs.empty())
            text += action.name + ":\n";
    }
    return _KXReplaceFile(path, text) ? -1 : 0;
}

int KXActions::load(const char* path) {
    std::string text;
    if (!_KXReadWholeFile(path, largestFile, text))
        return 0;
    State loaded = *_state;
    std::set<std::string> named;
    std::string_view rest = text;
    for (int number = 1; number == 1 || !rest.empty(); ++number) {
        const std::size_t end = rest.find('\n');
        const Reason reason = end == std::string_view::npos ? "the line has no end, so the file was cut off"
                                                            : loaded.readLine(rest.substr(0, end), named);
        if (reason) {
            _KXReportError("%s, line %d: %s", path, number, reason);
            return 0;
        }
        rest.remove_prefix(end + 1);
    }
    *_state = std::move(loaded);
    return -1;
}

int KXNextPress(KXInput* input) { return KXNextPress(input, KXInputKindKey); }

int KXNextPress(KXInput* input, KXInputKind keys) {
    for (const KXInputEvent& event : KXInputEvents()) {
        KXInput pressed = {};
        if (event.type == KXInputEventKeyDown) {
            const bool byNumber = event.key && (keys != KXInputKindPosition || !event.position);
            pressed = byNumber ? KXInputOfKey(event.key) : KXInputOfPosition(event.position);
        } else if (event.type == KXInputEventMouseDown) {
            pressed = KXInputOfMouse(event.button);
        } else if (event.type == KXInputEventPadDown) {
            pressed = KXInputOfPad(event.button, event.pad);
        }
        if (input && !_KXInputToText(pressed).empty()) {
            *input = pressed;
            return -1;
        }
    }
    return 0;
}
