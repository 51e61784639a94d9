#pragma once

/// @file
/// The test kit: everything of it, in one header. A game's test links it beside the library and needs neither
/// a display nor a sound card; the page on testing shows one.

#include <KobaltrixTest/KXTest.h>
#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestPad.h>
#include <KobaltrixTest/KXTestPicture.h>
#include <KobaltrixTest/KXTestUser.h>
