#pragma once

// What a game prints is to be seen in the terminal that it was started from, also where games have none of
// their own. What is sent into a file or a pipe goes there as ever.
void _KXUseTerminal();
