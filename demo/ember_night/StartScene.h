#pragma once

#include "App.h"

/// The scene that the command line asks for.
std::unique_ptr<Scene> startScene(App& app);
