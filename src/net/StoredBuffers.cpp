#include "net/StoredBuffers.h"

#include <Kobaltrix/KXNetworkBuffer.h>

#include <algorithm>
#include <cstring>

// How many of the last bytes may be the beginning of a marker.
int StoredBufferInfo::_begunMarker() const {
    int begun = std::min(_KXEndOfBufferLength - 1, length() - _unfinished);
    while (begun > 0 &&
           std::memcmp(bytes() + length() - begun, _KXEndOfBuffer, static_cast<std::size_t>(begun)) != 0)
        --begun;
    return begun;
}

bool StoredBufferInfo::findMessages(int longest) {
    const char* const begin = bytes();
    const char* const first = begin + _searched;
    const char* const end = begin + length();
    const char* position = first;
    bool allowed = true;
    while (end - position >= _KXEndOfBufferLength) {
        const auto candidates = static_cast<std::size_t>(end - position - _KXEndOfBufferLength + 1);
        const void* found = std::memchr(position, _KXEndOfBuffer[0], candidates);
        position = found ? static_cast<const char*>(found) : position + candidates;
        if (!found)
            break;
        if (std::memcmp(position, _KXEndOfBuffer, _KXEndOfBufferLength) != 0) {
            ++position;
            continue;
        }
        const int length = static_cast<int>(position - begin) - _unfinished;
        allowed = length <= longest;
        if (!allowed)
            break;
        _lengths.push(length);
        position += _KXEndOfBufferLength;
        _unfinished = static_cast<int>(position - begin);
    }
    _KXNetworkWorkDone.searched += static_cast<std::uint64_t>(position - first);
    _searched += static_cast<int>(position - first);
    return allowed && length() - _unfinished - _begunMarker() <= longest;
}

KXNetworkBuffer* StoredBufferInfo::takeMessage() {
    if (_lengths.empty())
        return nullptr;
    const int length = _lengths.front();
    auto message = std::make_unique<KXNetworkBuffer>(bytes(), length);
    _KXNetworkWorkDone.copied += static_cast<std::uint64_t>(length);
    _lengths.pop();
    const int passed = length + _KXEndOfBufferLength;
    _bytes.drop(passed);
    _searched -= passed;
    _unfinished -= passed;
    return message.release();
}
