#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The text of the last failure.

/// The last failure's text, cut to 511 bytes; empty while there is none. Two percent signs next to each
/// other, as a path may hold them, come out as one. Belongs to the library. Each thread has a text of its
/// own.
KX_API const char* KXError();
