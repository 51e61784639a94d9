#pragma once

#include "nights/Keeper.h"
#include "support/Image.h"
#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

/// Has the game find its files, and keep the player's where the test does.
inline void useFolders(const TemporaryFolder& player) {
    setVariable("KOBALTRIX_DATA_FOLDER", DEMO_FOLDER "/assets");
    setVariable("KOBALTRIX_USER_FOLDER", player.path());
}

/// The library as the game starts it, in time that passes only where the game waits.
struct EmberNightTest : testing::Test {
    EmberNightTest() {
        useFolders(playersFolder);
        std::string path = DEMO;
        EXPECT_EQ(KXInit(path.data()), -1) << KXError();
        KXApplicationCancelQuitRequest();
    }
    ~EmberNightTest() override { KXDeInit(); }

    const TemporaryFolder playersFolder;
    KXTestClock clock;
};

/// What is to be seen in the game now.
inline Image lookAt(Game& game) {
    game.draw();
    return Image::of(game.app.window);
}
