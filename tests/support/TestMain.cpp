#include "support/System.h"

#include <gtest/gtest.h>

#include <cstdlib>

static void setUnlessSet(const char* name, const char* value) {
    if (!std::getenv(name))
        setVariable(name, value);
}

int main(int argc, char** argv) {
    // Real OpenGL, if possible without a display, and no sound card; whoever starts the test may choose other
    // drivers.
    setUnlessSet("SDL_VIDEODRIVER", videoDriverOfTests);
    setUnlessSet("SDL_AUDIODRIVER", "dummy");
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    return RUN_ALL_TESTS();
}
