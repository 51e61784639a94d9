#pragma once

#include "nights/Keeper.h"
#include "support/Image.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

/// The library as the game starts it, in time that passes only where the game waits.
struct EmberNightTest : testing::Test {
    EmberNightTest() {
        setenv("KOBALTRIX_DATA_FOLDER", DEMO_FOLDER "/assets", 1);
        std::string path = DEMO;
        EXPECT_EQ(KXInit(path.data()), -1) << KXError();
        KXApplicationCancelQuitRequest();
    }
    ~EmberNightTest() override { KXDeInit(); }

    KXTestClock clock;
};

/// What is to be seen in the game now.
inline Image lookAt(Game& game) {
    game.draw();
    return Image::of(game.app.window);
}
