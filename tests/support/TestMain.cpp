#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
    // Real OpenGL without a display, and no sound card; whoever starts the test may choose other drivers.
    setenv("SDL_VIDEODRIVER", "offscreen", 0);
    setenv("SDL_AUDIODRIVER", "dummy", 0);
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    return RUN_ALL_TESTS();
}
