#include "net/ByteQueue.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

static constexpr int longestQueue = std::numeric_limits<int>::max();
static constexpr int keptRoom = 64 * 1024; // that a queue may keep while it holds nothing

// Moves what is held to the front of a block of that size, which may be the present one.
bool ByteQueue::_moveTo(int capacity) {
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
    _end = held;
    _begin = 0;
    return true;
}

char* ByteQueue::room(int wanted) {
    if (wanted > _capacity - _end) {
        const int held = length();
        if (wanted > longestQueue - held)
            throw std::bad_alloc();
        const bool halfIsFree = held <= _begin && wanted <= _capacity - held;
        const int doubled = _capacity <= longestQueue / 2 ? _capacity * 2 : longestQueue;
        if (!_moveTo(halfIsFree ? _capacity : std::max(held + wanted, doubled)))
            throw std::bad_alloc();
    }
    return _buffer.get() + _end;
}

void ByteQueue::append(const char* data, int length) {
    std::memcpy(room(length), data, static_cast<std::size_t>(length));
    _KXNetworkWorkDone.copied += static_cast<std::uint64_t>(length);
    added(length);
}

// As the room grows by doubling and shrinks by half at a quarter, what is moved for either stays in
// proportion to what passes through.
void ByteQueue::drop(int count) {
    _begin += count;
    if (_begin == _end)
        _begin = _end = 0;
    if (_capacity > keptRoom && length() < _capacity / 4)
        _moveTo(std::max(_capacity / 2, keptRoom));
}
