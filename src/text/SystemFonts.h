#pragma once

/// Tells fontconfig which fonts there are, where it does not know by itself. Call it before fontconfig is
/// asked for one; the first call does it.
void _KXLoadSystemFonts();
