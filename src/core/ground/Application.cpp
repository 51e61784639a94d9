#include "core/ground/Application.h"

#include "platform/FilePath.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>
#include <utility>

constinit const char* KXApplicationName = nullptr;
constinit const char* KXExecutablePath = nullptr;
constinit const char* KXBundlePath = nullptr;

static void replaceText(const char*& text, const char* replacement) {
    char* const copy = replacement ? strdup(replacement) : nullptr;
    if (replacement && !copy) // null would say that there is none
        throw std::bad_alloc();
    std::free(const_cast<char*>(std::exchange(text, copy)));
}

void _KXForgetApplicationPaths() {
    replaceText(KXExecutablePath, nullptr);
    replaceText(KXApplicationName, nullptr);
    replaceText(KXBundlePath, nullptr);
}

// The slash that has `count` - 1 slashes behind it; the path's first character is never looked at.
static const char* slashFromEnd(const char* path, int count) {
    for (const char* at = path + std::strlen(path) - 1; at > path; --at)
        if (_KXIsSlash(*at) && --count == 0)
            return at;
    return nullptr;
}

static void findPathsInBundle(const char* path, const char* name) {
    replaceText(KXApplicationName, name);
    if (const char* contentsEnd = slashFromEnd(path, 2)) {
        const std::string bundle = std::string(path, contentsEnd) + "/Resources/" + name;
        std::printf("%s\n", bundle.c_str());
        std::error_code
            ignored; // what exists may be a file, no folder to change to: the game goes on where it is
        if (std::filesystem::exists(_KXFilePath(bundle), ignored)) {
            replaceText(KXBundlePath, bundle.c_str());
            std::filesystem::current_path(_KXFilePath(bundle), ignored);
        }
    }
    const char* bundleParentEnd = slashFromEnd(path, 4);
    const std::string parent = bundleParentEnd ? std::string(path, bundleParentEnd + 1) : std::string(path);
    replaceText(KXExecutablePath, parent.c_str());
}

void _KXFindApplicationPaths(char* path) {
    _KXForgetApplicationPaths();
    if (!path)
        return;
    const char* lastSlash = *path ? slashFromEnd(path, 1) : nullptr;
    if (!lastSlash) {
        replaceText(KXApplicationName, path);
    } else if (std::strstr(path, "Contents/MacOS")) {
        findPathsInBundle(path, lastSlash + 1);
    } else {
        replaceText(KXApplicationName, lastSlash + 1);
        path[lastSlash - path] = 0;
        replaceText(KXExecutablePath, path);
    }
}

void KXApplicationRequestQuit() { _KXAppQuitRequested = -1; }

void KXApplicationCancelQuitRequest() { _KXAppQuitRequested = 0; }

int KXApplicationQuitRequested() { return _KXAppQuitRequested; }
