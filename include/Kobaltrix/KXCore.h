#pragma once

/// @file
/// Start-up and shut-down, the logic loop, the last error, the application and the user-interface colours: a
/// header for each, and here all of them.

#include <Kobaltrix/KXApplication.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXEvents.h>
#include <Kobaltrix/KXInit.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTypes.h>
#include <Kobaltrix/KXUIColors.h>
