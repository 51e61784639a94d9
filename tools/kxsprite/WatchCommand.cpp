#include "Commands.h"
#include "Files.h"
#include "Paths.h"
#include "Report.h"
#include "SpriteIO.h"

#include <SDL_timer.h>

#include <chrono>
#include <csignal>
#include <filesystem>

namespace {
namespace fs = std::filesystem;

volatile std::sig_atomic_t isEnded = 0;

void end(int) { isEnded = 1; }

/// Files and what they looked like.
using Stamps = std::map<fs::path, std::pair<fs::file_time_type, std::uintmax_t>>;

void note(const fs::path& path, Stamps& stamps) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(path, error);
    if (!error)
        stamps[path] = {time, fs::is_directory(path, error) ? 0 : fs::file_size(path, error)};
}

/// What a command reads: its files and what is in its folders, at any depth.
Stamps sourcesOf(const Arguments& arguments) {
    Stamps stamps;
    std::error_code ignored;
    for (const std::string& file : arguments.files) {
        note(pathOf(file), stamps);
        for (fs::recursive_directory_iterator entry(pathOf(file), ignored), last; entry != last;
             entry.increment(ignored))
            note(entry->path(), stamps);
    }
    return stamps;
}

void noteSheet(const std::string& file, Stamps& stamps) {
    if (pathOf(file).extension() != ".spr")
        return;
    try {
        if (const std::string texture = loadDocument(file).texture; !texture.empty())
            note(pathOf(sheetBeside(file, texture)), stamps);
    } catch (const Fault&) { // there is no sprite, which the run has reported
    }
}

/// The sheets of the sprites that a command reads or writes; somebody else may draw them.
Stamps sheetsOf(const Arguments& arguments) {
    Stamps stamps;
    for (const std::string& file : arguments.files)
        noteSheet(file, stamps);
    noteSheet(arguments.text("-o"), stamps);
    return stamps;
}

/// A command that is run whenever what it reads has changed and come to rest.
class Repeated {
public:
    explicit Repeated(const CommandLine& line) : _line(line) { run(); }

    void look() {
        Stamps now = sourcesOf(_line.arguments), sheets = sheetsOf(_line.arguments);
        const bool isNew = now != _sources || sheets != _sheets,
                   isAtRest = now == _seen && sheets == _seenSheets;
        _seen = std::move(now);
        _seenSheets = std::move(sheets);
        if (isNew && isAtRest)
            run();
    }

private:
    void run() {
        using Clock = std::chrono::steady_clock;
        _sources = sourcesOf(_line.arguments); // from before they are read
        const Clock::time_point start = Clock::now();
        const bool done = _line.command->run(_line.arguments);
        const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        std::printf("kxsprite: %s: %s in %d ms\n", _line.text.c_str(), done ? "done" : "failed",
                    static_cast<int>(time.count()));
        std::fflush(stdout);
        _sheets = sheetsOf(_line.arguments); // which this very run may have written
    }

    const CommandLine& _line;
    Stamps _sources, _sheets;  // of the last run
    Stamps _seen, _seenSheets; // at the last look
};
} // namespace

static bool watch(const Arguments& arguments) {
    std::signal(SIGINT, end);
    std::signal(SIGTERM, end);
    std::vector<Repeated> repeated(arguments.commands.begin(), arguments.commands.end());
    while (!isEnded) {
        SDL_Delay(250);
        for (Repeated& each : repeated)
            each.look();
    }
    return true;
}

const Command watchCommand = {
    "watch",
    "COMMAND... [-- COMMAND...]...",
    "watch       run commands that write a file, such as make, and again whenever what they read changes or\n"
    "            the sheet does: kxsprite watch make a.json -o a.spr -- make b.json -o b.spr\n"
    "            goes on after faults; an interrupt (Ctrl-C) or SIGTERM ends it with status 0",
    Command::Files::Commands,
    {},
    watch};
