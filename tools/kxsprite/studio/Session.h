#pragma once

#include "Project.h"

#include <functional>
#include <optional>
#include <set>

/// What the user works on.
struct Selection {
    int animation = -1;   ///< -1 for none.
    int frame = 0;        ///< The current one, which is among the selected ones.
    std::set<int> frames; ///< Selected, of the animation; empty only where it has none.
    int box = -1;         ///< -1 for none.

    bool operator==(const Selection&) const = default;
};

/// How a change stands to the one before.
enum class Join {
    No,      ///< A step of its own.
    Begin,   ///< The first of several that are one step together: of a drag, of a number being typed.
    Continue ///< One more of those.
};

/// A sprite as it is, as it was and as it was to be.
///
/// Everything that changes it is a call of this class and one step of undo; a call that changes nothing is
/// none, and bad numbers are cut to what makes sense. There is no end to what can be undone.
class Session {
public:
    Session() = default;

    /// Another sprite from here on.
    void begin(Project project);

    const Project& project() const { return _now.project; }
    const Selection& selection() const { return _now.selection; }
    /// The chosen animation, null for none.
    const NamedAnimation* animation() const;
    /// The current frame of the chosen animation, null for none.
    const Frame* frame() const;
    /// The chosen box, null for none.
    const NamedBox* box() const;
    /// Another number whenever project or selection have changed: who shows something of them compares.
    std::uint64_t version() const { return _version; }

    /// Chooses what there is of @a selection. No step of undo.
    void choose(Selection selection);
    void chooseAnimation(int animation);
    /// Chooses one frame alone.
    void chooseFrame(int frame);
    void chooseBox(int box);
    void chooseAllFrames();

    bool canUndo() const { return !_before.empty(); }
    bool canRedo() const { return !_after.empty(); }
    /// What would be undone or done again; empty for nothing.
    std::string undoName() const { return canUndo() ? _before.back().name : std::string(); }
    std::string redoName() const { return canRedo() ? _after.back().name : std::string(); }
    void undo();
    void redo();
    /// Takes back what was joined until now as if it had never been, as Escape does in a drag.
    void abandon();
    /// What is there now is on the disk.
    void noteSaved() { _saved = _now.project; }
    /// What is there now never was.
    void noteUnsaved() { _saved.reset(); }
    bool isSaved() const { return _saved && *_saved == _now.project; }

    void setTexture(const std::string& name);
    void setGrid(Grid grid, Join join = Join::No);

    // The sheet's picture, which is the project's own from the first of these on.
    /// A line of one colour from pixel to pixel. @param sheet what is painted on until now.
    void paintLine(const KXImage& sheet, KXPoint from, KXPoint to, KXPixel color, Join join);
    /// What is of one colour and connected gets another one.
    void paintFill(const KXImage& sheet, KXPoint at, KXPixel color);
    /// Another picture altogether.
    void setPicture(const KXImage& picture, const char* step);

    // Animations: all but the first are for the chosen one.
    /// An empty one behind the chosen one. An animation is saved once it has frames.
    void addAnimation(const std::string& name);
    /// False, with nothing changed, where the name is empty or another one's.
    bool renameAnimation(const std::string& name);
    void removeAnimation();
    void duplicateAnimation();
    /// By so many places down the list.
    void moveAnimation(int by);
    void setLoops(bool loops);
    /// Behind the chosen one; names that are there already get a number.
    void addAnimations(const std::vector<NamedAnimation>& animations, const char* step);

    // Frames of the chosen animation.
    /// Behind the current one; into a new animation where none is chosen. They are selected then.
    void addFrames(const std::vector<Frame>& frames, const char* step = "Add frames");
    /// The same with the current frame's duration.
    void cut(const std::vector<Area>& areas);
    void removeFrames();
    void duplicateFrames();
    /// The selected ones, all where one is selected.
    void reverseFrames();
    /// Adds the way back of those, without the turning points, which are shown once.
    void pingPongFrames();
    /// The selected ones, to stand before frame @a before, or at the end for their number.
    void moveFrames(int before);
    /// By so many places, together.
    void shiftFrames(int by);
    void setFrameBounds(int frame, Area area, Join join = Join::No);
    void setDurations(const std::set<int>& frames, int duration, Join join = Join::No);

    // Boxes.
    /// Chooses it. @return its place.
    int addBox(Area area, Join join = Join::No);
    /// False, with nothing changed, where the name is empty or another one's.
    bool renameBox(const std::string& name);
    void removeBox();
    void duplicateBox();
    void moveBox(int by);
    void setBox(int box, Area area, Join join = Join::No);
    void setBoxColor(std::uint32_t color, Join join = Join::No);
    /// Names that are there already get a number.
    void addBoxes(const std::vector<NamedBox>& boxes, const char* step);

    /// A name like @a wished that no animation has, and one that no box has.
    std::string freeAnimationName(const std::string& wished) const;
    std::string freeBoxName(const std::string& wished) const;

private:
    struct State {
        Project project;
        Selection selection;
    };
    struct Step {
        std::string name;
        State state;
    };

    void change(const char* name, Join join, const std::function<void(State&)>& edit);
    void changeFrames(const char* name, Join join,
                      const std::function<void(std::vector<Frame>&, Selection&)>& edit);
    void go(std::vector<Step>& from, std::vector<Step>& to);
    void settle(Selection& selection) const;
    std::vector<int> chosenFrames() const;

    State _now;
    std::vector<Step> _before, _after;
    std::string _joined; ///< The step that goes on; empty for none.
    bool _isPushed = false;
    std::optional<Project> _saved;
    std::uint64_t _version = 1;
};
