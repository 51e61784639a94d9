#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// What the loop tells of the platform's events beside the input state: which window an event belongs to, and
/// resized windows.

/// The window identifier of the event that is dispatched or was the last one; 4294967295 before the first. A
/// joystick's event has its device's identifier there and a touch the low half of its device's; what others
/// have, such as the platform's request to quit, means nothing.
extern KX_API unsigned KXCurrentEventWindowID;

/// Called with a window's identifier and its new size in points.
typedef void (*KXWindowResizedCallback)(unsigned windowID, KXSize size);
/// Sets the function that is called, from KXLogicLoop(), when a window was resized, also one that is not the
/// library's; null for none.
KX_API void KXSetWindowResizedCallback(KXWindowResizedCallback callback);
