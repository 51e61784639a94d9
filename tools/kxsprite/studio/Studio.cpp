#include "Studio.h"

#include "../Display.h"
#include "Editor.h"

#include <cstdlib>

namespace {
constexpr int shotAfter = 30; // frames, when everything has its place

/// The library, for as long as the studio runs.
struct Library {
    Library() {
        if (!KXInit())
            throw Fault(KXError());
    }
    ~Library() { KXDeInit(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

/// @return whether nobody will see the window.
bool needDisplay(const StudioOptions& options) {
    const bool isHidden = !hasDisplay() && !(options.replay.empty() && options.screenshot.empty());
    if (isHidden)
        drawUnseen();
    if (!hasDisplay())
        throw Fault("there is no display to open a window on");
    return isHidden;
}

/// From the window's making on, so that its size is the recording's.
void beginRecording(const StudioOptions& options) {
    if (!options.replay.empty() && !KXBeginReplay(options.replay.c_str()))
        throw Fault(KXError(), options.replay);
    if (!options.record.empty() && !KXBeginRecording(options.record.c_str()))
        throw Fault(KXError(), options.record);
}

void useFont() {
    for (const char* name : {"DejaVu Sans", "Noto Sans", "Liberation Sans", "sans"})
        if (const char* path = KXFindFont(name)) {
            KXUISetGlobalFont(path, KXAliasModeTexture, 12, KXZeroPoint);
            return;
        }
    throw Fault("no font was found (Debian's fonts-dejavu-core has one)");
}

void keepPicture(KXWindow& window, const std::string& path) {
    if (!window.copyImage().writeToPNG(path.c_str()))
        throw Fault(KXError(), path);
}

/// A replay begins as its recording did: without what the user has set since.
std::string settingsFor(const StudioOptions& options) {
    const bool isAlone = !options.replay.empty() || !options.record.empty() || !options.screenshot.empty();
    return !options.settings.empty() ? options.settings : isAlone ? "" : settingsFolder();
}
} // namespace

void runStudio(const StudioOptions& options) {
    const bool isHidden = needDisplay(options);
    const Library library;
    beginRecording(options);
    const std::string settings = settingsFor(options);
    const Settings first = loadSettings(settings);
    KXWindow window("Sprite studio", {static_cast<float>(first.width), static_cast<float>(first.height)}, -1);
    window.setMinimumSize({940, 560});
    window.setSharpText(-1);
    window.setRenderContext();
    useFont();
    Editor editor(settings);
    if (!options.file.empty() && !editor.open(options.file) && options.replay.empty())
        throw Fault(editor.status(), options.file);
    editor.offerRecovery(options.file);

    const bool isReplay = !options.replay.empty();
    const int last = options.frames || options.screenshot.empty() ? options.frames : shotAfter;
    std::string title;
    int steps = 0;
    KXSetLogicExact(-1);
    KXResetLogicLoop();
    bool isLast = false;
    for (int frames = 1; !isLast; ++frames) {
        KXPreLogicLoop();
        while (KXLogicLoop()) {
            editor.poll();
            KXLogicUpdate();
            if (afterEachStudioStep)
                afterEachStudioStep(++steps);
        }
        isLast =
            editor.hasQuit() || (isReplay ? KXRecordingStateNow() != KXRecordingReplays : frames == last);
        window.setRenderContext();
        KXClear({0, 0, 0, 1});
        if (isHidden && !isLast)
            window.setClipTo({{0, 0}, {1, 1}}); // spares what nobody will see, and nothing else
        editor.draw(window.size());
        window.unsetClip();
        if (title != editor.title())
            window.setTitle((title = editor.title()).c_str());
        if (isLast && !options.screenshot.empty())
            keepPicture(window, options.screenshot);
        window.swapBuffers();
        KXPostLogicLoop();
        KXWaitForLogicStep();
    }
    if (KXRecordingStateNow() == KXRecordingApart)
        throw Fault(KXError(), options.replay);
}
