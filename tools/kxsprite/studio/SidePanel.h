#pragma once

#include "Session.h"

#include <Kobaltrix/Kobaltrix.h>

#include <array>
#include <functional>

/// The lists of animations and boxes, and what is typed exactly: numbers and names.
///
/// Its widgets are polled by the window's panel; poll() then makes changes of the session of what the user
/// did, and shows the session as it is.
class SidePanel {
public:
    enum class Page { Frame, Boxes, Grid, Paint };

    /// @param panel gets the widgets. @param say shows a line to the user.
    SidePanel(Session& session, KXUIPanel& panel, std::function<void(const std::string&)> say);

    KXUILayout& layout() { return _all; }
    /// After the panel was polled.
    void poll();
    /// Milliseconds of a logic step, in which durations are shown.
    void setStepMilliseconds(int milliseconds);

    Page page() const { return static_cast<Page>(_pages.selectedIndex()); }
    void showPage(Page page);
    /// The keyboard goes to the name, all of it selected.
    void nameAnimation();
    void nameBox();
    /// Whether what the keyboard is with is about animations, or about boxes.
    bool isAboutAnimations() const { return _animations.hasFocus(); }
    bool isAboutBoxes() const { return _boxes.hasFocus(); }

    /// Whether another box was asked for in the last poll.
    bool wantsBox() const;

    // What the editor does when they are clicked.
    KXUIButton findGrid, cutCells, cutIslands, boxColor;
    KXUIColorPicker paint;

private:
    /// Four numbers of a rectangle, or six of a grid, each with a label.
    struct Numbers {
        std::vector<std::unique_ptr<KXUILabel>> labels;
        std::vector<std::unique_ptr<KXUISpinBox>> boxes;
        KXUILayout grid{KXUIGrid, 4};
        KXUISpinBoxOptions options;

        int changed() const; ///< Which the user changed in the last poll, -1 for none.
        float at(int i) const { return static_cast<float>(boxes[static_cast<std::size_t>(i)]->number()); }
        void show(std::initializer_list<double> numbers);
        void setUsable(bool shown, bool enabled);
    };
    struct Buttons {
        std::array<KXUIButton, 5> all;
        KXUILayout row{KXUIRow};

        int clicked() const;
    };

    void makeNumbers(Numbers& numbers, std::initializer_list<const char*> names, double from);
    void makeButtons(Buttons& buttons, const char* what);
    void makeAnimations();
    void makePages();
    void pollAnimations();
    void pollFrame();
    void pollBoxes();
    void pollGrid();
    void pollName(KXUITextEntry& entry, KXUIListBox& list, bool& hadFocus, const std::string& name,
                  const std::function<bool(const std::string&)>& rename);
    Join joinFor(const void* what);
    void show();
    void showFrame();
    void showBoxes();

    Session& _session;
    KXUIPanel& _panel;
    std::function<void(const std::string&)> _say;

    KXUILabel _animationsLabel, _boxesLabel, _durationLabel, _millisecondsLabel;
    KXUIListBox _animations, _boxes;
    KXUITextEntry _animationName, _boxName;
    KXUICheckBox _loops;
    Buttons _animationButtons, _boxButtons;
    KXUITabBar _pages;
    Numbers _frame, _box, _grid;
    KXUISpinBox _duration;
    KXUILayout _all{KXUIColumn}, _durationRow{KXUIRow}, _boxRow{KXUIRow}, _gridRow{KXUIRow};

    bool _wasNaming[2] = {};
    int _stepMilliseconds = 16;
    std::uint64_t _shown = 0;
    const void* _joined = nullptr; ///< The number that is being changed.
    int _joinedFor = 0;            ///< Steps since its last change.
};
