#include "audio/SoundFiles.h"

#include <vorbis/vorbisenc.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

Samples Samples::constant(std::int16_t left, std::int16_t right, int frames, int frequency) {
    Samples samples = {frequency, 2, {}};
    for (int i = 0; i < frames; ++i)
        samples.values.insert(samples.values.end(), {left, right});
    return samples;
}

Samples Samples::tone(double hertz, int amplitude, int frames, int frequency, int channels) {
    Samples samples = {frequency, channels, {}};
    for (int i = 0; i < frames; ++i) {
        const double value = amplitude * std::sin(2 * std::numbers::pi * hertz * i / frequency);
        samples.values.insert(samples.values.end(), static_cast<std::size_t>(channels),
                              static_cast<std::int16_t>(std::lround(value)));
    }
    return samples;
}

static void append(std::string& file, std::size_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        file.push_back(static_cast<char>(value >> 8 * i & 0xFF));
}

std::string wavFile(const Samples& samples) {
    const std::size_t bytesPerFrame = 2u * samples.channels, bytes = 2 * samples.values.size();
    std::string file = "RIFF";
    append(file, 36 + bytes, 4);
    file += "WAVEfmt ";
    append(file, 16, 4);
    append(file, 1, 2); // uncompressed
    append(file, samples.channels, 2);
    append(file, samples.frequency, 4);
    append(file, samples.frequency * bytesPerFrame, 4);
    append(file, bytesPerFrame, 2);
    append(file, 16, 2); // bits
    file += "data";
    append(file, bytes, 4);
    for (const std::int16_t value : samples.values)
        append(file, static_cast<std::uint16_t>(value), 2);
    return file;
}

static void appendBigEndian(std::string& file, std::size_t value, int bytes) {
    for (int i = bytes - 1; i >= 0; --i)
        file.push_back(static_cast<char>(value >> 8 * i & 0xFF));
}

std::string aiffFile(const Samples& samples) {
    const std::size_t bytes = 2 * samples.values.size();
    const int frames = samples.channels ? static_cast<int>(samples.values.size()) / samples.channels : 0;
    std::string file = "FORM";
    appendBigEndian(file, 46 + bytes, 4);
    file += "AIFFCOMM";
    appendBigEndian(file, 18, 4);
    appendBigEndian(file, samples.channels, 2);
    appendBigEndian(file, frames, 4);
    appendBigEndian(file, 16, 2); // bits
    // The frequency as a floating-point number of 80 bits, its mantissa in 32 of 64.
    int exponent = 0;
    const double mantissa = std::frexp(samples.frequency, &exponent);
    appendBigEndian(file, samples.frequency ? exponent + 16382 : 0, 2);
    appendBigEndian(file, static_cast<std::size_t>(std::ldexp(std::abs(mantissa), 32)), 4);
    appendBigEndian(file, 0, 4);
    file += "SSND";
    appendBigEndian(file, 8 + bytes, 4);
    appendBigEndian(file, 0, 8); // no offset, no blocks
    for (const std::int16_t value : samples.values)
        appendBigEndian(file, static_cast<std::uint16_t>(value), 2);
    return file;
}

namespace {
// The encoder, and the Ogg stream that its packets go into.
struct Encoder {
    explicit Encoder(const Samples& samples) {
        vorbis_info_init(&info);
        if (vorbis_encode_init_vbr(&info, samples.channels, samples.frequency, 0.6f) != 0)
            std::abort();
        vorbis_comment_init(&comment);
        vorbis_analysis_init(&state, &info);
        vorbis_block_init(&state, &block);
        ogg_stream_init(&stream, 1);
    }
    ~Encoder() {
        ogg_stream_clear(&stream);
        vorbis_block_clear(&block);
        vorbis_dsp_clear(&state);
        vorbis_comment_clear(&comment);
        vorbis_info_clear(&info);
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    void writePages(std::string& file, int (*next)(ogg_stream_state*, ogg_page*)) {
        for (ogg_page page; next(&stream, &page) != 0;) {
            file.append(reinterpret_cast<const char*>(page.header),
                        static_cast<std::size_t>(page.header_len));
            file.append(reinterpret_cast<const char*>(page.body), static_cast<std::size_t>(page.body_len));
        }
    }

    // Encodes what was submitted.
    void writeBlocks(std::string& file) {
        ogg_packet packet;
        while (vorbis_analysis_blockout(&state, &block) == 1) {
            vorbis_analysis(&block, nullptr);
            vorbis_bitrate_addblock(&block);
            while (vorbis_bitrate_flushpacket(&state, &packet) != 0) {
                ogg_stream_packetin(&stream, &packet);
                writePages(file, ogg_stream_pageout);
            }
        }
    }

    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state state;
    vorbis_block block;
    ogg_stream_state stream;
};
} // namespace

std::string oggFile(const Samples& samples) {
    Encoder encoder(samples);
    std::string file;
    ogg_packet headers[3];
    vorbis_analysis_headerout(&encoder.state, &encoder.comment, &headers[0], &headers[1], &headers[2]);
    for (ogg_packet& header : headers)
        ogg_stream_packetin(&encoder.stream, &header);
    encoder.writePages(file, ogg_stream_flush);

    const int frames = static_cast<int>(samples.values.size()) / samples.channels;
    constexpr int step = 1024;
    for (int begin = 0; begin < frames; begin += step) {
        const int count = std::min(step, frames - begin);
        float** room = vorbis_analysis_buffer(&encoder.state, count);
        for (int i = 0; i < count; ++i)
            for (int channel = 0; channel < samples.channels; ++channel)
                room[channel][i] =
                    static_cast<float>(
                        samples.values[static_cast<std::size_t>((begin + i) * samples.channels + channel)]) /
                    32768;
        vorbis_analysis_wrote(&encoder.state, count);
        encoder.writeBlocks(file);
    }
    vorbis_analysis_wrote(&encoder.state, 0); // the end
    encoder.writeBlocks(file);
    encoder.writePages(file, ogg_stream_flush);
    return file;
}

#ifdef KOBALTRIX_SANITIZE
extern "C" const char* __asan_default_options();

// A damaged file has the mixer ask for more memory than there is: it must be told so, as without a sanitizer.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
#endif
