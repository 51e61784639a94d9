#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// What stands in a file of settings, see KXSettings.

/// Why something cannot be read or set; null if it can.
using _KXSettingsReason = const char*;

/// A value on its line.
struct _KXSettingsValue {
    enum Kind : char { Number, Flag, Text } kind = Number;
    double number = 0;
    bool flag = false;
    std::string text;
};

/// Takes the first value off what stands behind a key. False if there is none.
bool _KXTakeSettingsValue(std::string_view& values, _KXSettingsValue& value);

/// The lines of a file, in their order.
class _KXSettingsText {
public:
    static constexpr std::size_t mostLines = 65'536, largest = 4 << 20;

    /// Reads a whole file. If it is none, nothing changes. @param line becomes the number of the line that is
    /// wrong.
    _KXSettingsReason read(std::string_view content, int& line);
    std::string write() const;

    bool has(std::string_view key) const { return _places.find(key) != _places.end(); }
    /// The values of a key; empty without one.
    std::string_view values(std::string_view key) const;
    /// Gives a key its values.
    _KXSettingsReason set(std::string_view key, std::string values);
    bool remove(std::string_view key);

private:
    struct Line {
        std::string key;    ///< Empty for a comment.
        std::string values; ///< All of a comment.
        bool isGone = false;
    };

    _KXSettingsReason readLine(std::string_view line);
    void closeRanks();

    std::vector<Line> _lines;
    std::map<std::string, std::size_t, std::less<>> _places; ///< Of keys among the lines.
    std::size_t _gone = 0; ///< Lines that were removed: more than half of all are taken out together.
};
