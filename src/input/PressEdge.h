#pragma once

/// Takes over whether something is held now; @a held keeps it between two calls, as -1 or 0.
/// @return whether a press began since the last call.
inline bool _KXPressBegins(int& held, int now) {
    const bool begins = now && !held;
    held = now ? -1 : 0;
    return begins;
}
