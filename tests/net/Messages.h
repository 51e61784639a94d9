#pragma once

#include <Kobaltrix/KXNetworkBuffer.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

using namespace std::string_literals;

inline const std::string marker = "_KXEOB\0"s;

/// The bytes of a message that was handed out, nothing for null. Deletes it.
inline std::optional<std::string> take(KXNetworkBuffer* message) {
    const std::unique_ptr<KXNetworkBuffer> owned(message);
    if (!message)
        return std::nullopt;
    char* bytes = message->buffer();
    std::string result(bytes, static_cast<std::size_t>(message->bufferLength()));
    std::free(bytes);
    return result;
}

inline std::string textOf(char* text) {
    const std::string result = text ? text : "null";
    std::free(text);
    return result;
}
