#pragma once

#include "App.h"

#include <array>
#include <string>

/// Three text entries, and texts in several colours.
class TextPanel {
public:
    explicit TextPanel(const App& app);

    /// One logic step. @return what an entry did, in words; empty for nothing.
    std::string step();
    void draw();

    KXUITextEntry& first() { return _name; }
    KXUITextEntry& last() { return _motto; }

private:
    void drawColors() const;

    const App& _app;
    KXUITextEntry _name, _password, _motto;
    std::array<KXUITextEntry*, 3> _entries = {&_name, &_password, &_motto};
};
