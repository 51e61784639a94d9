#pragma once

#include "CommonOptions.h"

#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <cstdlib>
#include <new>

/// What a game shows by itself when it is started without a display: a recording that came with it, up to a
/// step, of which it leaves a picture.
struct Beginning {
    const char* recording; ///< A file among the game's data.
    const char* step;
    const char* picture; ///< What it is called unless the command line says so.
};

/// Has the library replay the beginning. @return where it lies; empty if it is lost.
std::string showBeginning(const Beginning& beginning, const CommonOptions& options);
/// Starts the library as the command line says. False, with a line on standard error, if it cannot.
bool startLibrary(char* program, const CommonOptions& options);

/// Plays a game until somebody leaves. @return what the program returns.
template<class Game, class Options>
int play(const Options& options) {
    try {
        Game game(options);
        while (game.frame()) {
        }
        return game.isGood() ? 0 : 1;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "play: a window, a picture or a sprite cannot be opened. %s\n", KXError());
        return 1;
    }
}
