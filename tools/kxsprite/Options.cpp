#include "Options.h"

#include <charconv>
#include <cstdio>
#include <string_view>

void printUsage() {
    std::puts(
        "usage: kxsprite info [--json] FILE.spr\n"
        "       kxsprite make IN.json -o OUT.spr [--step-ms N]\n"
        "       kxsprite check FILE.spr...\n"
        "       kxsprite preview FILE.spr -o OUT.png\n"
        "\n"
        "  info        print the texture, the animations and the boxes of a sprite file\n"
        "    --json      as JSON that make takes back unchanged\n"
        "  make        write a sprite file from that JSON or from one that Aseprite exports with --sheet,\n"
        "              --data, --list-tags and --list-slices\n"
        "    --step-ms N milliseconds of one logic step, 1 to 1000 (16); the length of Aseprite's frames is\n"
        "                counted in them\n"
        "  check       read strictly, and name every fault and its place\n"
        "  preview     draw every animation as a row of frames with the boxes outlined, without a display;\n"
        "              the environment variable KXSPRITE_FONT names the font file of the labels\n"
        "\n"
        "  -o FILE     the file to write\n"
        "  --          what follows are files, whatever they begin with\n"
        "\n"
        "Exit status: 0 when all went well, 1 when a file has a fault or cannot be read or written, 2 when "
        "the\n"
        "command line is not understood.");
}

static bool complain(std::string_view what) {
    std::fprintf(stderr, "kxsprite: %.*s; see kxsprite --help\n", static_cast<int>(what.size()), what.data());
    return false;
}

static bool readStep(std::string_view text, int& step) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), step);
    return error == std::errc() && end == text.data() + text.size() && step >= 1 && step <= 1000;
}

static bool makesSense(const Options& options) {
    const std::string& command = options.command;
    if (command.empty())
        return complain("a command is missing");
    if (command != "info" && command != "make" && command != "check" && command != "preview")
        return complain(command + " is no command");
    const bool writes = command == "make" || command == "preview";
    if (writes && options.output.empty())
        return complain(command + " needs -o and the file to write");
    if (options.files.empty() || (command != "check" && options.files.size() > 1))
        return complain(command + (command == "check" ? " needs a file" : " needs one file"));
    return true;
}

/// Which command an option belongs to, so that one in the wrong place is not silently without effect.
static bool belongs(std::string_view option, const std::string& command) {
    return option == "-o"          ? command == "make" || command == "preview"
           : option == "--step-ms" ? command == "make"
                                   : command == "info";
}

bool readOptions(int argc, char** argv, Options& options) {
    bool onlyFiles = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (onlyFiles || argument.empty() || argument[0] != '-') {
            if (options.command.empty())
                options.command = argument;
            else
                options.files.emplace_back(argument);
        } else if (argument == "--help" || argument == "-h") {
            options.help = true;
            return true;
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--json" && belongs(argument, options.command)) {
            options.json = true;
        } else if (argument == "-o" && value && *value && belongs(argument, options.command)) {
            options.output = value;
            ++i;
        } else if (argument == "--step-ms" && value && readStep(value, options.stepMilliseconds) &&
                   belongs(argument, options.command)) {
            ++i;
        } else {
            return complain(std::string(argument).append(" is not understood here"));
        }
    }
    return makesSense(options);
}
