#pragma once

#include <cstdint>
#include <memory>

/// How many bytes have been moved and how many looked at since the program began. Both must stay in
/// proportion to the bytes received, which no clock could tell reliably.
struct _KXNetworkWork {
    std::uint64_t copied;
    std::uint64_t searched;
};
inline constinit _KXNetworkWork _KXNetworkWorkDone = {0, 0};

/// Bytes that come in at the end and leave at the front without the rest being moved.
class ByteQueue {
public:
    int length() const { return _end - _begin; }
    const char* bytes() const { return _buffer.get() + _begin; }
    int capacity() const { return _capacity; }

    /// Where up to @a wanted bytes may be written that added() then takes in. Throws std::bad_alloc.
    char* room(int wanted);
    void added(int count) { _end += count; }
    void append(const char* data, int length);
    /// Lets go of that many bytes at the front, and of room that is no longer needed.
    void drop(int count);

private:
    bool _moveTo(int capacity);

    std::unique_ptr<char[]> _buffer;
    int _capacity = 0;
    int _begin = 0; // the first byte held
    int _end = 0;   // behind the last one
};
