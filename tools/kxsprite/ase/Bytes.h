#pragma once

#include "../Document.h"

#include <string_view>

/// Bytes of an .aseprite file, read one value after the other, and where they stand. Every operation throws
/// a Fault that says so where there are not enough.
class AseBytes {
public:
    explicit AseBytes(std::string_view file) : _file(file), _end(file.size()) {}

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::int16_t i16() { return static_cast<std::int16_t>(number(2)); }
    std::uint32_t u32() { return number(4); }
    std::int32_t i32() { return static_cast<std::int32_t>(number(4)); }
    /// A text with its length in front.
    std::string text();
    void skip(std::size_t size) { take(size); }
    std::string_view take(std::size_t size);
    /// The next bytes as a piece of their own, which are left behind.
    AseBytes piece(std::size_t size);
    /// The rest of this piece.
    std::string_view rest() { return take(left()); }

    std::size_t left() const { return _end - _at; }
    /// Refuses a number of things that the bytes left cannot hold. @param smallest bytes that each has.
    void expect(std::size_t count, std::size_t smallest, const char* things) const;

    /// From here on faults tell of this frame, and of this chunk in it.
    void enterFrame(int frame) { _frame = frame; }
    void enterChunk(int chunk) { _chunk = chunk; }
    [[noreturn]] void fail(const std::string& what) const;

private:
    std::uint32_t number(std::size_t size);

    std::string_view _file;
    std::size_t _at = 0, _end;
    int _frame = -1, _chunk = -1;
};
