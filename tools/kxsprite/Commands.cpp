#include "Commands.h"

#include <algorithm>
#include <cstdio>

namespace {
// In the order of the help.
const Command* const commands[] = {&infoCommand,    &makeCommand,  &packCommand, &checkCommand,
                                   &previewCommand, &watchCommand, &editCommand};

/// The lines of a text, each behind a beginning.
std::string lines(const std::string& beginning, std::string_view text) {
    std::string lines;
    for (std::size_t end = 0; !text.empty(); text.remove_prefix(end)) {
        end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.append(beginning).append(text.substr(0, end));
    }
    return lines += '\n';
}
} // namespace

const Command* findCommand(std::string_view name) {
    for (const Command* command : commands)
        if (command->name == name)
            return command;
    return nullptr;
}

void printUsage() {
    constexpr std::string_view beginning = "usage: ";
    std::string usage, help;
    for (const Command* command : commands) {
        usage +=
            lines(std::string(beginning.size(), ' ') + "kxsprite " + command->name + " ", command->usage);
        help += lines("  ", command->help);
    }
    std::printf("%s\n%s", usage.replace(0, beginning.size(), beginning).c_str(), help.c_str());
    std::puts("\n"
              "  -o FILE     the file to write\n"
              "  --padding N where a sheet is made: transparent pixels between two frames, 0 to 256 (1)\n"
              "  --extrude N there, too: pixels by which the edges of a frame go on around it (0)\n"
              "  --no-trim   there, too: the whole canvas is kept, also what no frame of a sprite uses\n"
              "  --          what follows are files, whatever they begin with\n"
              "\n"
              "Exit status: 0 when all went well, 1 when a file has a fault or cannot be read or written, 2 "
              "when the\n"
              "command line is not understood.");
}
