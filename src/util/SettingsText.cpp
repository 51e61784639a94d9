#include "util/SettingsText.h"

#include "util/Quoted.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

static constexpr std::string_view firstLine = "kobaltrix settings 1", lastLine = "end", blanks = " \t\r";

static std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

static bool isKey(std::string_view key) {
    constexpr std::size_t longest = 255;
    return !key.empty() && key.size() <= longest && key.front() != '#' && trimmed(key) == key &&
           std::ranges::none_of(key,
                                [](unsigned char byte) { return byte == ':' || byte < ' ' || byte == 0x7F; });
}

static bool readWord(std::string_view word, _KXSettingsValue& value) {
    if (word == "yes" || word == "no") {
        value = {_KXSettingsValue::Flag, 0, word == "yes", {}};
        return true;
    }
    value = {};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value.number);
    return error == std::errc() && end == word.data() + word.size() && std::isfinite(value.number);
}

bool _KXTakeSettingsValue(std::string_view& values, _KXSettingsValue& value) {
    std::string_view rest = trimmed(values);
    if (rest.starts_with('"')) {
        value = {_KXSettingsValue::Text, 0, false, {}};
        if (!_KXTakeQuoted(rest, value.text) || (!rest.empty() && blanks.find(rest.front()) == blanks.npos))
            return false;
    } else {
        const std::size_t end = std::min(rest.find_first_of(blanks), rest.size());
        if (!readWord(rest.substr(0, end), value))
            return false;
        rest.remove_prefix(end);
    }
    values = rest;
    return true;
}

_KXSettingsReason _KXSettingsText::readLine(std::string_view line) {
    if (_lines.size() == mostLines)
        return "there are too many lines";
    const std::string_view content = trimmed(line);
    if (content.empty() || content.front() == '#') {
        _lines.push_back({{}, std::string(line)});
        return nullptr;
    }
    const std::size_t colon = line.find(':');
    const std::string_view key = trimmed(line.substr(0, std::min(colon, line.size())));
    if (colon == line.npos || !isKey(key))
        return "there is no key with a colon";
    if (has(key))
        return "the key stands there twice";
    const std::string_view values = line.substr(colon + 1);
    _KXSettingsValue value;
    std::string_view rest = values;
    while (!trimmed(rest).empty())
        if (!_KXTakeSettingsValue(rest, value))
            return "a value is no number, neither yes nor no, and no text in quotation marks";
    _places.emplace(key, _lines.size());
    _lines.push_back({std::string(key), std::string(values)});
    return nullptr;
}

_KXSettingsReason _KXSettingsText::read(std::string_view content, int& number) {
    number = 1;
    _KXSettingsText text;
    bool hasEnded = false;
    // A zero is what file systems leave where they lost something.
    _KXSettingsReason reason = content.find('\0') != content.npos ? "it holds a byte that is 0" : nullptr;
    for (; !reason && !content.empty(); ++number) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        const std::string_view line = content.substr(0, end);
        content.remove_prefix(std::min(end + 1, content.size()));
        if (number == 1)
            reason = trimmed(line) == firstLine ? nullptr : "the file does not begin as one of settings";
        else if (hasEnded)
            reason = trimmed(line).empty() ? nullptr : "there is more behind the end";
        else if (trimmed(line) == lastLine)
            hasEnded = true;
        else
            reason = text.readLine(line);
        if (reason)
            return reason;
    }
    if (!reason && !hasEnded)
        reason = "the end is missing, so the file was cut off";
    if (!reason)
        std::swap(*this, text);
    return reason;
}

std::string _KXSettingsText::write() const {
    std::string content = std::string(firstLine) + '\n';
    for (const Line& line : _lines)
        if (!line.isGone)
            content.append(line.key).append(line.key.empty() ? "" : ":").append(line.values) += '\n';
    return content.append(lastLine) += '\n';
}

std::string_view _KXSettingsText::values(std::string_view key) const {
    const auto found = _places.find(key);
    return found == _places.end() ? std::string_view() : _lines[found->second].values;
}

_KXSettingsReason _KXSettingsText::set(std::string_view key, std::string values) {
    if (const auto found = _places.find(key); found != _places.end()) {
        _lines[found->second].values = std::move(values);
        return nullptr;
    }
    if (!isKey(key))
        return "this cannot be a key";
    if (_lines.size() - _gone == mostLines)
        return "there are too many lines";
    if (_lines.size() == _lines.capacity())
        _lines.reserve(2 * _lines.size() + 16);
    Line line = {std::string(key), std::move(values)};
    _places.emplace(key, _lines.size());
    _lines.push_back(std::move(line)); // for which there is room
    return nullptr;
}

bool _KXSettingsText::remove(std::string_view key) {
    const auto found = _places.find(key);
    if (found == _places.end())
        return false;
    _lines[found->second] = {{}, {}, true};
    _places.erase(found);
    if (++_gone > _lines.size() / 2)
        closeRanks();
    return true;
}

void _KXSettingsText::closeRanks() {
    std::erase_if(_lines, [](const Line& line) { return line.isGone; });
    _gone = 0;
    for (std::size_t i = 0; i < _lines.size(); ++i)
        if (!_lines[i].key.empty())
            _places.find(_lines[i].key)->second = i;
}
