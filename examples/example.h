// What the examples share: their colours, where their files lie, and a run that nobody watches. A game of
// your own needs none of this, and works the same without the two lines stepDone() and frameDone().
#pragma once

#include <Kobaltrix/Kobaltrix.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>

inline const KXColor night = KXMakeColori(27, 27, 58, 255), dusk = KXMakeColori(43, 43, 86, 255),
                     gold = KXMakeColori(255, 217, 138, 255), teal = KXMakeColori(74, 154, 166, 255),
                     rose = KXMakeColori(232, 104, 120, 255), leaf = KXMakeColori(126, 201, 128, 255),
                     paper = KXMakeColori(244, 227, 193, 255);

/// The same colour, of another opacity.
inline KXColor withAlpha(KXColor color, float alpha) { return {color.r, color.g, color.b, alpha}; }

/// Called after each step with the number of steps so far: here the tests press keys and move the mouse.
inline void (*afterEachStep)(int steps) = nullptr;

/// Reads what an example was started with. With `--frames N` it ends after N frames, with `--screenshot FILE`
/// it saves the last one, the 100th if no number is given. Either runs it without a display, where every
/// frame is exactly one logic step: the pictures are the same on a slow machine as on a fast one. (On
/// Windows, which draws nowhere but on a display, there is a window all the same.)
class Example {
public:
    Example(int argc, char** argv) {
        for (int i = 1; i < argc; i += 2) {
            const char* value = i + 1 < argc ? argv[i + 1] : "";
            if (!std::strcmp(argv[i], "--screenshot") && *value)
                _screenshot = value;
            else if (std::strcmp(argv[i], "--frames") || (_lastFrame = std::atoi(value)) <= 0)
                end(2, "usage: [--frames N] [--screenshot FILE]", "");
        }
        if (_screenshot && !_lastFrame)
            _lastFrame = 100;
        if (_lastFrame)
            goUnseen();
#if !defined(__APPLE__) && !defined(_WIN32)
        if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") && !std::getenv("SDL_VIDEODRIVER"))
            end(1, "There is no display to open a window on.", "--screenshot FILE does without one.");
#endif
        // A window, a picture or a sound that cannot be had throws std::bad_alloc.
        std::set_terminate([] { end(1, "A window, a file or the memory for it cannot be had.", KXError()); });
    }

    /// Says why the library did not start. The exit status of the program.
    static int failed() {
        std::fprintf(stderr, "%s\n", KXError());
        return 1;
    }

    /// Call it at the end of every logic step.
    void stepDone() {
        ++_steps;
        if (afterEachStep)
            afterEachStep(_steps);
        if (_lastFrame)
            KXResetLogicLoop(); // nothing is owed but one step, which the next frame runs
    }

    /// Call it when a frame is drawn, before it is swapped: afterwards its pixels cannot be read any more.
    void frameDone(KXWindow& window) {
        if (++_frames != _lastFrame)
            return;
        KXApplicationRequestQuit();
        if (!_screenshot)
            return;
        const std::unique_ptr<KXTexture> copy(window.copyTexture());
        if (!copy || !copy->writeToPNG(_screenshot))
            end(1, "The screenshot cannot be saved.", KXError());
    }

    /// The path of one of the examples' files, of their folder for an empty name. A temporary string.
    static const char* file(const char* name) { return *name ? KXDataPath(name) : KXDataFolder(); }

    /// The path of an installed font. A temporary string.
    static const char* font(const char* name = "DejaVu Sans", const char* package = "fonts-dejavu-core") {
        const char* path = KXFindFont(name);
        if (!path)
            end(1, name, KXTempString("is missing. It comes with the package %s.", package));
        return path;
    }

private:
    static void goUnseen() {
#ifdef _WIN32
        _putenv_s("SDL_AUDIODRIVER", "dummy");
#else
        setenv("SDL_VIDEODRIVER", "offscreen", 0);
        setenv("SDL_AUDIODRIVER", "dummy", 0);
#endif
    }

    [[noreturn]] static void end(int status, const char* what, const char* why) {
        std::fprintf(stderr, "%s %s\n", what, why);
        std::_Exit(status);
    }

    int _lastFrame = 0, _frames = 0, _steps = 0;
    const char* _screenshot = nullptr;
};
