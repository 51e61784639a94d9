#pragma once

/// Whether the platform's video driver shows no window to anybody, as in tests; also before it is started.
bool _KXShowsNothing();
