#include "WavFile.h"

#include <fstream>

static void append(std::string& file, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        file += static_cast<char>(value >> (8 * i) & 0xFF);
}

bool saveWav(const std::string& path, int rate, const std::vector<std::int16_t>& samples) {
    const auto size = static_cast<std::uint32_t>(2 * samples.size());
    std::string file;
    file.reserve(44 + size);
    file += "RIFF";
    append(file, 36 + size, 4);
    file += "WAVEfmt ";
    append(file, 16, 4); // bytes that follow of the format
    append(file, 1, 2);  // uncompressed
    append(file, 1, 2);  // channels
    append(file, static_cast<std::uint32_t>(rate), 4);
    append(file, static_cast<std::uint32_t>(2 * rate), 4); // bytes a second
    append(file, 2, 2);                                    // bytes a sample
    append(file, 16, 2);                                   // bits a sample
    file += "data";
    append(file, size, 4);
    for (const std::int16_t sample : samples)
        append(file, static_cast<std::uint16_t>(sample), 2);

    std::ofstream stream(path, std::ios::binary);
    stream.write(file.data(), static_cast<std::streamsize>(file.size()));
    stream.close();
    return stream.good();
}
