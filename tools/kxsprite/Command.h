#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// An option of a command. One with a value is followed by it.
struct Option {
    enum class Kind { Flag, Text, Number };

    const char* name;
    Kind kind = Kind::Flag;
    int least = 0, most = 0;      ///< Of a number.
    const char* needed = nullptr; ///< What is missing without it, as the user is told; null if nothing is.
};

/// -o of a command that writes one file and cannot do without.
inline constexpr Option outputOption = {"-o", Option::Kind::Text, 0, 0, "and the file to write"};

struct Command;
struct CommandLine;

/// What stands on the command line behind the name of the command.
struct Arguments {
    /// An option and its value, or a file with no option.
    struct Word {
        std::string option, value;
    };

    std::vector<Word> words; ///< All in their order, for options that mean what stands behind them.
    std::vector<std::string> files;
    std::vector<CommandLine> commands;                       ///< Of a command that is about others.
    std::map<std::string, std::string, std::less<>> options; ///< Those given, a flag with an empty value.

    bool has(std::string_view option) const { return options.find(option) != options.end(); }
    /// The value of an option; empty if it is not given.
    std::string text(std::string_view option) const;
    /// The value of a number.
    int number(std::string_view option, int unlessGiven) const;
};

/// A command line as it was understood.
struct CommandLine {
    const Command* command = nullptr; ///< Null where help is asked for.
    Arguments arguments;
    std::string text; ///< Its words.
};

/// One thing that the program can do. Commands.cpp lists them.
struct Command {
    enum class Files { None, AtMostOne, One, AtLeastOne, Commands };

    const char* name;
    const char* usage; ///< What follows the name, with a line feed between several ways.
    const char* help;  ///< What it does and its options: what printUsage() prints, from the third column on.
    Files files;       ///< How many it takes; or command lines that write a file, with -- between them.
    std::vector<Option> options;
    bool (*run)(const Arguments&); ///< False, after lines about it on standard error, if something failed.
};

/// The commands by their names; null for none of that name.
const Command* findCommand(std::string_view name);

/// Prints how to use the program.
void printUsage();
