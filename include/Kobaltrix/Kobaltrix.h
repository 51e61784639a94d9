#pragma once

/// @file
/// Everything the library offers, in one header.

#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTouch.h>
#include <Kobaltrix/KXTypes.h>
