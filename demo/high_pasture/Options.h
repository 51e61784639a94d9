#pragma once

#include "CommonOptions.h"

/// What the command line asks for.
struct Options : CommonOptions {
    int level = 0; ///< Begin in that one, from 1; 0 for the title.

protected:
    bool readValue(std::string_view option, const char* value) override;
};
