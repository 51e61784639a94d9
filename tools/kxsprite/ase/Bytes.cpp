#include "Bytes.h"

void AseBytes::fail(const std::string& what) const {
    std::string place;
    if (_frame >= 0)
        place += "frame " + std::to_string(_frame) + ", ";
    if (_chunk >= 0)
        place += "chunk " + std::to_string(_chunk) + ", ";
    throw Fault(place + "byte " + std::to_string(_at) + ": " + what);
}

std::string_view AseBytes::take(std::size_t size) {
    if (size > left())
        fail(std::to_string(size) + " bytes should be here, but there are " + std::to_string(left()));
    const std::string_view taken = _file.substr(_at, size);
    _at += size;
    return taken;
}

AseBytes AseBytes::piece(std::size_t size) {
    AseBytes piece = *this;
    take(size);
    piece._end = _at;
    return piece;
}

std::uint32_t AseBytes::number(std::size_t size) {
    std::uint32_t value = 0;
    unsigned shift = 0;
    for (const char byte : take(size)) {
        value |= std::uint32_t{static_cast<unsigned char>(byte)} << shift;
        shift += 8;
    }
    return value;
}

std::string AseBytes::text() {
    const std::size_t length = u16();
    return std::string(take(length));
}

void AseBytes::expect(std::size_t count, std::size_t smallest, const char* things) const {
    if (count > left() / smallest)
        fail(std::to_string(count) + " " + things + " are claimed, which the " + std::to_string(left()) +
             " bytes left cannot hold");
}
