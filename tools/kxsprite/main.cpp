// Makes, shows and checks sprite files.

#include "AsepriteImport.h"
#include "Check.h"
#include "Files.h"
#include "Json.h"
#include "Options.h"
#include "Preview.h"
#include "SpriteIO.h"
#include "Value.h"

#include <cstdio>
#include <filesystem>
#include <new>

namespace {
void complain(const std::string& path, const char* what) {
    std::fprintf(stderr, "kxsprite: %s: %s\n", path.c_str(), what);
}

/// Does something with a file; false, with a line about that file, if it has a fault.
template<typename Action>
bool tryWith(const std::string& path, Action action) {
    try {
        return action();
    } catch (const Fault& fault) {
        complain(fault.file.empty() ? path : fault.file, fault.what());
    } catch (const std::bad_alloc&) {
        complain(path, "there is not enough memory for it");
    } catch (const std::exception& error) {
        complain(path, error.what());
    }
    return false;
}

bool info(const Options& options) {
    const std::string& path = options.files.front();
    return tryWith(path, [&] {
        const Document document = loadDocument(path);
        const std::string text = options.json ? jsonFromDocument(document) : describe(document);
        if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
            throw Fault("the output cannot be written");
        return true;
    });
}

bool make(const Options& options) {
    const std::string& path = options.files.front();
    Document document;
    const bool isRead = tryWith(path, [&] {
        const ParsedJson json(readFile(path));
        const Value root = json.root();
        if (isOwnJson(root)) {
            document = documentFromJson(root);
            return true;
        }
        if (!isAsepriteJson(root))
            throw Fault("is JSON neither of kxsprite info --json nor of an Aseprite export (--data)");
        std::vector<std::string> notes;
        document = documentFromAseprite(
            root, {options.stepMilliseconds, std::filesystem::path(path).stem().string()}, notes);
        for (const std::string& note : notes)
            complain(path, note.c_str());
        return true;
    });
    return isRead && tryWith(options.output, [&] {
               saveDocument(document, options.output);
               return true;
           });
}

bool check(const Options& options) {
    bool sound = true;
    for (const std::string& path : options.files)
        sound &= tryWith(path, [&] { return checkSprite(path); });
    return sound;
}

bool preview(const Options& options) {
    const std::string& path = options.files.front();
    return tryWith(path, [&] {
        previewSprite(path, options.output);
        return true;
    });
}
} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!readOptions(argc, argv, options))
        return 2;
    if (options.help) {
        printUsage();
        return 0;
    }
    const bool done = options.command == "info"    ? info(options)
                      : options.command == "make"  ? make(options)
                      : options.command == "check" ? check(options)
                                                   : preview(options);
    return done ? 0 : 1;
}
