#include "Options.h"

#include "Stage.h"

bool Options::readValue(std::string_view option, const char* value) {
    return option == "--level" && readCount(value, level, Stage::count);
}
