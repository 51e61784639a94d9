#pragma once

#include <Kobaltrix/KXMusic.h>

/// Gives the music stream the volume of its group, and halts it with its group.
void _KXApplyMusicGroup();
/// Has the music stream be as at first: the mixer was opened.
void _KXResetMusic();
/// Has the music fade out, or stops it at once.
void _KXStopMusic(int fadeOutMilliseconds);
