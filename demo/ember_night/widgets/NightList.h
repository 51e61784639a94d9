#pragma once

#include "App.h"

#include <string>

/// A list of a hundred thousand nights.
class NightList {
public:
    explicit NightList(const App& app);

    /// One logic step. @return what the list did, in words; empty for nothing.
    std::string step();
    void draw();

    KXUIListBox& list() { return _list; }

private:
    const App& _app;
    KXUIListBox _list;
};
