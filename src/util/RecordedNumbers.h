#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The numbers that the GNU C library's rand() gives after srand(), from 0 to 2147483647. Recordings are made
/// of them on every system, since the other C libraries have numbers of their own, and some only 15 bits of
/// them.
class _KXRecordedNumbers {
public:
    static constexpr int largest = 0x7FFFFFFF;

    /// As after srand() with this seed.
    explicit _KXRecordedNumbers(unsigned seed) {
        // What that library documents as random() with 31 words: x[i] = x[i - 3] + x[i - 31], the first of
        // which come from the generator of Park and Miller (16807, modulo 2^31 - 1), and the first 310 sums
        // are not used. A seed is taken for signed, and so a negative one gets there by a remainder that is
        // mended once.
        constexpr std::int64_t modulus = 2147483647;
        std::int64_t word = static_cast<std::int32_t>(seed ? seed : 1);
        for (std::uint32_t& kept : _words) {
            kept = static_cast<std::uint32_t>(word);
            word = word * 16807 % modulus;
            if (word < 0)
                word += modulus;
        }
        for (int unused = 0; unused < 310; ++unused)
            next();
    }

    int next() {
        const std::uint32_t sum = _words[_at] += _words[(_at + _words.size() - 3) % _words.size()];
        _at = (_at + 1) % _words.size();
        return static_cast<int>(sum >> 1);
    }

private:
    std::array<std::uint32_t, 31> _words; ///< The one at _at is the oldest.
    std::size_t _at = 3;
};
