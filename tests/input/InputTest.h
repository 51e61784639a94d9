#pragma once

#include "core/dispatch/EventDispatch.h"
#include "input/InputState.h"
#include "input/StepInput.h"
#include "input/TextInput.h"

#include <Kobaltrix/KXInit.h>
#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestPad.h>
#include <KobaltrixTest/KXTestUser.h>

#include <SDL.h>
#include <gtest/gtest.h>

/// A started library that knows of no input yet, and whoever makes some. Each step takes 16 ms; the time of
/// the logic loop wraps soon.
struct InputTest : testing::Test {
    InputTest() {
        EXPECT_EQ(KXInit(), -1);
        _KXEndTextInput();
        SDL_StopTextInput();
        user.step();
        _KXPutInputState({});
    }
    ~InputTest() override { KXDeInit(); }

    KXTestClock clock{0xFFFFFF00};
    KXTestUser user;
};
