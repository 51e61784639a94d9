#include "net/StoredBuffers.h"

#include <Kobaltrix/KXNetworkBuffer.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

static constexpr int longestBuffer = std::numeric_limits<int>::max();
static constexpr int keptRoom = 64 * 1024; // that an entry may keep while it holds nothing

// Moves what is held to the front of a block of that size, which may be the present one.
bool StoredBufferInfo::_moveTo(int capacity) {
    const int held = length();
    if (capacity == _capacity) {
        if (held > 0)
            std::memmove(_buffer.get(), bytes(), static_cast<std::size_t>(held));
    } else {
        std::unique_ptr<char[]> block(new (std::nothrow) char[static_cast<std::size_t>(capacity)]);
        if (!block)
            return false;
        if (held > 0)
            std::memcpy(block.get(), bytes(), static_cast<std::size_t>(held));
        _buffer = std::move(block);
        _capacity = capacity;
    }
    _KXNetworkWorkDone.copied += static_cast<std::uint64_t>(held);
    _searched -= _begin;
    _unfinished -= _begin;
    _end = held;
    _begin = 0;
    return true;
}

// Room that is no longer needed. As it grows by doubling and shrinks by half at a quarter, what is moved for
// either stays in proportion to what passes through.
void StoredBufferInfo::_release() {
    if (_begin == _end)
        _begin = _searched = _unfinished = _end = 0;
    if (_capacity > keptRoom && length() < _capacity / 4)
        _moveTo(std::max(_capacity / 2, keptRoom));
}

char* StoredBufferInfo::room(int wanted) {
    if (wanted > _capacity - _end) {
        const int held = length();
        if (wanted > longestBuffer - held)
            throw std::bad_alloc();
        const bool halfIsFree = held <= _begin && wanted <= _capacity - held;
        const int doubled = _capacity <= longestBuffer / 2 ? _capacity * 2 : longestBuffer;
        if (!_moveTo(halfIsFree ? _capacity : std::max(held + wanted, doubled)))
            throw std::bad_alloc();
    }
    return _buffer.get() + _end;
}

void StoredBufferInfo::append(const char* data, int length) {
    std::memcpy(room(length), data, static_cast<std::size_t>(length));
    _KXNetworkWorkDone.copied += static_cast<std::uint64_t>(length);
    added(length);
}

bool StoredBufferInfo::findMessages(int longest) {
    const char* const first = _buffer.get() + _searched;
    const char* const end = _buffer.get() + _end;
    const char* position = first;
    bool allowed = true;
    while (allowed && end - position >= _KXEndOfBufferLength) {
        const auto candidates = static_cast<std::size_t>(end - position - _KXEndOfBufferLength + 1);
        const void* found = std::memchr(position, _KXEndOfBuffer[0], candidates);
        position = found ? static_cast<const char*>(found) : position + candidates;
        if (!found)
            break;
        if (std::memcmp(position, _KXEndOfBuffer, _KXEndOfBufferLength) != 0) {
            ++position;
            continue;
        }
        const int length = static_cast<int>(position - _buffer.get()) - _unfinished;
        allowed = length <= longest;
        _lengths.push(length);
        position += _KXEndOfBufferLength;
        _unfinished = static_cast<int>(position - _buffer.get());
    }
    _KXNetworkWorkDone.searched += static_cast<std::uint64_t>(position - first);
    _searched += static_cast<int>(position - first);
    // The marker may have begun.
    return allowed && _end - _unfinished - (_KXEndOfBufferLength - 1) <= longest;
}

KXNetworkBuffer* StoredBufferInfo::takeMessage() {
    if (_lengths.empty())
        return nullptr;
    const int length = _lengths.front();
    auto message = std::make_unique<KXNetworkBuffer>(bytes(), length);
    _KXNetworkWorkDone.copied += static_cast<std::uint64_t>(length);
    _lengths.pop();
    _begin += length + _KXEndOfBufferLength;
    _release();
    return message.release();
}
