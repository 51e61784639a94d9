#pragma once

#include <string>

/// The folder below which programs keep what belongs to the user of this process; empty where there is none.
std::string _KXUserDataRoot();
/// The folder that is the user's own, as the environment says; empty where it does not.
std::string _KXUserHome();
