#include "util/Quoted.h"

#include <charconv>
#include <cstdio>

std::string _KXQuoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        char code[5];
        if (c == '"' || c == '\\') {
            quoted += {'\\', c};
        } else if (static_cast<unsigned char>(c) < ' ') {
            std::snprintf(code, sizeof code, "\\x%02x", c);
            quoted += code;
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

bool _KXTakeQuoted(std::string_view& line, std::string& text) {
    text.clear();
    if (!line.starts_with('"'))
        return false;
    for (line.remove_prefix(1); !line.empty(); line.remove_prefix(1)) {
        if (line.front() == '"') {
            line.remove_prefix(1);
            return true;
        }
        if (line.front() != '\\') {
            text += line.front();
            continue;
        }
        line.remove_prefix(1);
        if (line.starts_with('x')) {
            unsigned code = 0;
            const char* const digits = line.data() + 1;
            if (line.size() < 3 || std::from_chars(digits, digits + 2, code, 16).ptr != digits + 2 ||
                code == 0)
                return false;
            text += static_cast<char>(code);
            line.remove_prefix(2);
        } else if (line.starts_with('"') || line.starts_with('\\')) {
            text += line.front();
        } else {
            return false;
        }
    }
    return false;
}
