#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// What the loop tells of the platform's events beside the input state: which window an event belongs to, and
/// resized windows.

/// The window identifier that the event being dispatched carries; 4294967295 before the first event. For
/// joystick and touch events it is the device's identifier.
extern KX_API unsigned KXCurrentEventWindowID;

/// Called with a window's identifier and its new size in points.
typedef void (*KXWindowResizedCallback)(unsigned windowID, KXSize size);
/// Sets the function that is called, from KXLogicLoop(), when a window was resized; null for none.
KX_API void KXSetWindowResizedCallback(KXWindowResizedCallback callback);
