#include "Arguments.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <span>

namespace {
bool complain(std::string_view what) {
    std::fprintf(stderr, "kxsprite: %.*s; see kxsprite --help\n", static_cast<int>(what.size()), what.data());
    return false;
}

/// Whether a text is a whole number; what is none leaves the number as it was.
bool readNumber(std::string_view text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool suits(const Option& option, std::string_view value) {
    int number = 0;
    return option.kind == Option::Kind::Number
               ? readNumber(value, number) && number >= option.least && number <= option.most
               : !value.empty();
}

const Option* findOption(const Command* command, std::string_view name) {
    if (command)
        for (const Option& option : command->options)
            if (option.name == name)
                return &option;
    return nullptr;
}

bool hasItsFiles(const Command& command, std::size_t count) {
    using Files = Command::Files;
    const std::string name = command.name;
    switch (command.files) {
    case Files::None:
        return count == 0 || complain(name + " takes no file");
    case Files::AtMostOne:
        return count <= 1 || complain(name + " takes one file at most");
    case Files::One:
        return count == 1 || complain(name + " needs one file");
    case Files::Commands:
        return true;
    case Files::AtLeastOne:
        return count >= 1 || complain(name + " needs a file");
    }
    return true;
}

bool makesSense(const Command& command, const Arguments& arguments) {
    for (const Option& option : command.options)
        if (option.needed && !arguments.has(option.name))
            return complain(std::string(command.name) + " needs " + option.name + " " + option.needed);
    return hasItsFiles(command, arguments.files.size());
}
} // namespace

std::string Arguments::text(std::string_view option) const {
    const auto found = options.find(option);
    return found == options.end() ? std::string() : found->second;
}

int Arguments::number(std::string_view option, int unlessGiven) const {
    int number = unlessGiven;
    readNumber(text(option), number);
    return number;
}

static bool readWords(std::span<char*> words, CommandLine& line);

/// Reads command lines with -- between them.
static bool readCommands(std::span<char*> words, CommandLine& line) {
    for (auto begin = words.begin(); begin <= words.end();) {
        const auto end =
            std::find_if(begin, words.end(), [](const char* word) { return !std::strcmp(word, "--"); });
        CommandLine& inner = line.arguments.commands.emplace_back();
        if (!readWords({begin, end}, inner))
            return false;
        if (!inner.command) {
            line.command = nullptr; // help
            return true;
        }
        if (!findOption(inner.command, "-o"))
            return complain(std::string(line.command->name) + " is for commands that write a file, not for " +
                            inner.command->name);
        if (end == words.end())
            break;
        begin = end + 1;
    }
    return true;
}

static bool readWords(std::span<char*> words, CommandLine& line) {
    Arguments& arguments = line.arguments;
    std::string_view name;
    bool onlyFiles = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view argument = words[i];
        line.text.append(i ? " " : "").append(argument);
        if (onlyFiles || argument.empty() || argument[0] != '-') {
            if (!name.empty()) {
                arguments.files.emplace_back(argument);
                arguments.words.push_back({"", arguments.files.back()});
                continue;
            }
            name = argument;
            line.command = findCommand(name);
            if (line.command && line.command->files == Command::Files::Commands)
                return readCommands(words.subspan(i + 1), line);
        } else if (argument == "--help" || argument == "-h") {
            line.command = nullptr;
            return true;
        } else if (argument == "--") {
            onlyFiles = true;
        } else {
            const Option* option = findOption(line.command, argument);
            const bool hasValue = option && option->kind != Option::Kind::Flag;
            if (!option || (hasValue && (i + 1 == words.size() || !suits(*option, words[i + 1]))))
                return complain(std::string(argument).append(" is not understood here"));
            const std::string value = hasValue ? words[++i] : "";
            if (hasValue)
                line.text.append(" ").append(value);
            arguments.words.push_back({option->name, value});
            arguments.options.insert_or_assign(option->name, value);
        }
    }
    if (name.empty())
        return complain("a command is missing");
    if (!line.command)
        return complain(std::string(name).append(" is no command"));
    return makesSense(*line.command, arguments);
}

bool readCommandLine(int argc, char** argv, CommandLine& line) {
    const std::span<char*> words(argv, static_cast<std::size_t>(argc));
    return readWords(words.subspan(std::min<std::size_t>(1, words.size())), line);
}
