#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// What a fuzzer gives, taken piece by piece. Behind its end all bytes are 0 and all texts empty.
class FuzzBytes {
public:
    explicit FuzzBytes(std::string_view bytes) : _rest(bytes) {}

    bool atEnd() const { return _rest.empty(); }
    std::uint8_t byte() { return number<std::uint8_t>(); }
    template<class Number>
    Number number() {
        Number value = {};
        const std::string bytes(take(sizeof value));
        std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }
    /// At most as many bytes as the next one says.
    std::string text() {
        const std::size_t length = byte();
        return std::string(take(length));
    }
    std::string rest() { return std::string(take(_rest.size())); }

private:
    std::string_view take(std::size_t length) {
        const std::string_view taken = _rest.substr(0, length);
        _rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view _rest;
};

/// One run, from whatever the fuzzer gives: each target defines it.
void fuzz(FuzzBytes bytes);

/// Ends the process, so that the fuzzer keeps what led here, unless something holds.
void require(bool holds, const char* what);

/// A file with a content, always at the same place, and gone with the process.
const char* fuzzFile(const std::string& content, const char* extension = "");

/// Starts the library once, without a display and a sound card, with a current window of 320 x 200 points.
class KXWindow;
KXWindow& fuzzWindow();
/// Ends a logic step, as far as temporary strings and the error slot are concerned.
void endFuzzStep();
