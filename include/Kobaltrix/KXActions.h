#pragma once

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXPads.h>
#include <Kobaltrix/KXPlatform.h>

#include <memory>

/// @file
/// A game's own actions, such as "jump", each bound to any number of keys, places on the keyboard, mouse
/// buttons and buttons of pads. They are asked like a key, kept in a file that people can read, and bound
/// anew on a settings screen.
///
///     KXActions actions;
///     actions.bind("left", KXInputOfPosition(KXPositionA));
///     actions.bind("left", KXInputOfPad(KXPadLeftStickLeft, KXAnyPad));
///     actions.bind("jump", KXInputOfKey(KXKeySpace));
///     ...
///     x += 3 * (actions.value("right") - actions.value("left"));
///     if (actions.wentDown("jump"))
///         jump();

/// What an input belongs to.
enum KXInputKind : int {
    KXInputKindNone = 0,
    KXInputKindKey,         ///< A key by what it is labelled with: a KXKeyNumber.
    KXInputKindPosition,    ///< A key by where it lies: a KXKeyPosition.
    KXInputKindMouseButton, ///< A KXMouseButton, but not the wheel.
    KXInputKindPadButton    ///< A button, a trigger or a stick's direction: a KXPadButton.
};

/// Something that can be held.
struct KXInput {
    KXInputKind kind; ///< What it belongs to.
    int number;       ///< Within its kind.
    int pad;          ///< Number of the pad, from 0, or #KXAnyPad; 0 for what is on no pad.
};

KX_API KXInput KXInputOfKey(int key);           ///< @param key a KXKeyNumber.
KX_API KXInput KXInputOfPosition(int position); ///< @param position a KXKeyPosition.
KX_API KXInput KXInputOfMouse(int button);      ///< @param button a KXMouseButton, but not the wheel.
/// @param button a KXPadButton. @param pad its number, from 0, or #KXAnyPad.
KX_API KXInput KXInputOfPad(int button, int pad);
/// -1 if both are the same, else 0.
KX_API int KXInputsAreEqual(KXInput a, KXInput b);
/// What to show for an input: "Space", for a position the name of the key that the user's layout has there,
/// "Mouse Left", "Pad A", and "Pad 2 A" for the pad with the number 1. "None" for what is no input. A
/// temporary string.
KX_API const char* KXInputName(KXInput input);

/// The first thing that was pressed in this step, for a settings screen that asks for a key. A pad's button
/// comes with the number of its pad; set that to #KXAnyPad for a game that does not tell pads apart.
/// @param input is filled. @return -1, or 0 if nothing was pressed.
KX_API int KXNextPress(KXInput* input);
/// The same. @param input is filled. @param keys #KXInputKindKey to get keys by what they are labelled with,
/// as above, or
///   #KXInputKindPosition to get them by where they lie.
KX_API int KXNextPress(KXInput* input, KXInputKind keys);

/// Inputs, to be walked with a range-based for.
struct KXInputList {
    const KXInput* first; ///< Null if there are none.
    int count;            ///< How many there are.

    const KXInput* begin() const { return first; }       ///< For a range-based for.
    const KXInput* end() const { return first + count; } ///< For a range-based for.
};

/// Actions and what they are bound to. A game may have several of these, such as one for each player; a copy
/// is one of its own.
///
/// An action is down while any of its inputs is held. What it tells is for the step that is under way,
/// whoever asks and however often, as with KXKeyHeld() and KXKeyWentDown(): a tap between two steps is told
/// in the next, and a second input that goes down while the first is held is no second press.
///
/// Names are compared byte by byte. They have 1 to 63 bytes, no colon and no control characters, do not begin
/// with '#', and neither begin nor end with a blank. There are at most 256 actions with 16 inputs each.
/// Whatever gets the name of an action that does not exist gives 0 with a text in KXError().
class KX_API KXActions {
public:
    KXActions(); ///< Without any action.
    ~KXActions();
    KXActions(const KXActions& other);            ///< With the same actions and inputs.
    KXActions& operator=(const KXActions& other); ///< Takes over the actions and inputs of another.

    /// Binds an action, which is made if it does not exist, to an input more. One that it is bound to already
    /// stays the only one of its kind. @return -1, or 0 with a text in KXError() for a name that cannot be
    /// one, for what is no input, or when there are too many.
    int bind(const char* action, KXInput input);
    /// Takes all inputs from an action; it goes on existing. @return -1, or 0 as said above.
    int unbind(const char* action);
    /// Takes one input from an action; a button of any pad stands for that of each, and the other way round.
    /// @return -1, or 0 also if it was not bound to it.
    int unbind(const char* action, KXInput input);

    int count() const; ///< How many actions there are.
    /// The name of an action, in the order in which they were made; null for a bad index. It lives as long as
    /// no action is made, loaded or copied over.
    const char* action(int index) const;
    /// The inputs of an action. They live as long as no action is bound or loaded.
    KXInputList inputs(const char* action) const;
    /// The first action that is bound to what unbind() would take, null for none. So an input is freed for
    /// another action: `while (const char* other = actions.actionOf(input)) actions.unbind(other, input);`
    /// The name lives as long as that of action().
    const char* actionOf(KXInput input) const;

    /// -1 while any of its inputs is held, else 0.
    int held(const char* action) const;
    /// How often it went down in this step: mostly 0 or 1.
    int wentDown(const char* action) const;
    /// How often it came up in this step.
    int wentUp(const char* action) const;
    /// How far it is pushed, 0 to 1: the way of a trigger or a stick, and 1 for what else is held; of several
    /// inputs the largest. A stick begins to count before it is held, as its dead zone says.
    float value(const char* action) const;

    /// Writes all actions into a file, one input a line: "jump: key Space", "left: position A",
    /// "fire: mouse Left", "jump: pad A" for any pad, "jump: pad2 A" for the pad with the number 1, "duck:"
    /// for an action without. The file is complete or, when that fails, as it was.
    /// @return -1, or 0 with a text in KXError().
    int save(const char* path) const;
    /// Reads such a file. Actions that it names get what it says, or are made; others stay as they are, so a
    /// new version of a game keeps the defaults of what an old one did not know. Empty lines and those that
    /// begin with '#' are left out.
    /// @return -1, or 0 with a text in KXError() that names the line, and then nothing has changed.
    int load(const char* path);

private:
    struct KX_INTERNAL State;
    std::unique_ptr<State> _state;
};
