#include "Pitch.h"

#include <algorithm>
#include <cmath>

double pitch(std::string_view name) {
    constexpr int semitones[] = {9, 11, 0, 2, 4, 5, 7}; // from A to G, above C
    const int sign = name[1] == '#' ? 1 : name[1] == 'b' ? -1 : 0;
    const int octave = name.back() - '0';
    return 440 * std::exp2((semitones[name[0] - 'A'] + sign - 9) / 12.0 + octave - 4);
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> all;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0)
            all.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return all;
}
