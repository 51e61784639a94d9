#pragma once

#include "App.h"

/// Which keys and buttons do what: each action can be given another one.
class ControlsScene : public Scene {
public:
    explicit ControlsScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;
    bool takesLetters() override { return _asked != nullptr; }

private:
    /// A button for an action, or in the last row for something else.
    struct Cell {
        const char* action; ///< Null in the last row.
        std::unique_ptr<KXUIButton> button;
    };
    void addCell(const char* action, const char* caption = "");
    void showInputs();
    int chosenCell();
    void stepQuestion();
    void bind(const KXInput& input);

    App& _app;
    std::vector<Cell> _cells; ///< Row by row, two in each.
    int _focus = 0;
    KXPoint _pointer = KXMousePoint;
    const char* _asked = nullptr; ///< The action that is given another input now.
    bool _waits = false;          ///< The mouse was pressed for an answer: buttons are not meant.
    std::string _news;
};
