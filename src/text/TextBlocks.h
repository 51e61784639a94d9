#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A text of any length, which can be changed anywhere at the cost of a few thousand bytes.
///
/// It is kept in blocks of some kilobytes, each of whole characters, so a change touches one of them, and a
/// large one those that it replaces. What lies before each block, in bytes, characters and lines, is summed
/// up only as far as somebody asks, so that typing at the beginning of a text does not walk through all of
/// it; it is then searched. (A gap in one long array moves half the text when the cursor goes to its other
/// end, and a tree costs more code than these sums.)
///
/// The text is well-formed UTF-8 whose lines end with line feeds. Positions are byte offsets that lie between
/// two characters.
class _KXTextBlocks {
public:
    /// How much of something there is.
    struct Sums {
        std::size_t bytes = 0, characters = 0, breaks = 0;
        void add(const Sums& other);
        void subtract(const Sums& other);
    };
    const Sums& total() const { return _total; }

    /// Puts a text where another was. Where memory lacks, which it throws, all is as it was.
    void exchange(std::size_t begin, std::size_t end, std::string_view text);
    /// What lies between two positions; the second adds it to a text.
    std::string part(std::size_t begin, std::size_t end) const;
    void copyTo(std::string& to, std::size_t begin, std::size_t end) const;

    /// The bytes of the character behind a position; none at the end.
    std::string_view character(std::size_t position) const;
    std::size_t before(std::size_t position) const;
    std::size_t after(std::size_t position) const;
    /// Where the character begins that a byte belongs to; the end for bytes behind it.
    std::size_t characterStart(std::size_t byte) const;
    /// Characters before a position, and where a character is, the end for numbers beyond it.
    std::size_t charactersBefore(std::size_t position) const;
    std::size_t positionOfCharacter(std::size_t number) const;
    /// The line of a position, counted from 0, and where a line begins and ends, without its line feed. A
    /// line that is none begins and ends where the text ends.
    std::size_t lineOf(std::size_t position) const;
    std::size_t lineStart(std::size_t line) const;
    std::size_t lineEnd(std::size_t line) const;

private:
    struct Block {
        std::string text; // never empty
        Sums sums;
    };
    struct Place {
        std::size_t block, offset;
    };
    static Sums sumsOf(std::string_view text);
    static std::vector<Block> blocksOf(std::string_view text);
    const Sums& sumsBefore(std::size_t block) const;
    std::size_t find(std::size_t Sums::*what, std::size_t most) const;
    Place placeOf(std::size_t position) const;
    bool changeWithin(Place begin, std::size_t end, std::string_view text);

    std::vector<Block> _blocks;
    Sums _total;
    mutable std::vector<Sums> _before; // what lies before each block,
    mutable std::size_t _known = 0;    // for as many as this
};
