// Makes, shows and checks sprite files.

#include "Arguments.h"

int main(int argc, char** argv) {
    CommandLine line;
    if (!readCommandLine(argc, argv, line))
        return 2;
    if (!line.command) {
        printUsage();
        return 0;
    }
    return line.command->run(line.arguments) ? 0 : 1;
}
