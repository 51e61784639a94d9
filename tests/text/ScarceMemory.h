#pragma once

/// Memory that runs out on request: `new` fails after this many more successful allocations; negative for
/// never.
inline constinit long allocationsLeft = -1;
