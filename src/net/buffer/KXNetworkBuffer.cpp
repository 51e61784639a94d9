#include <Kobaltrix/KXNetworkBuffer.h>

#include <Kobaltrix/KXString.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

constinit const int KXNetworkBufferLongSize = 8;

static constexpr int longestBuffer = std::numeric_limits<int>::max();

// A block of zeros for the caller. Of length 0 it has a byte all the same, because some systems answer a
// request for none as they answer one that failed.
static char* newBlock(int length) {
    return static_cast<char*>(std::calloc(static_cast<std::size_t>(std::max(length, 1)), 1));
}

void KXNetworkBufferPutL(char* destination, long value) {
    if (!destination)
        return;
    const auto bits = static_cast<std::uint32_t>(value);
    for (int i = 0; i < 8; ++i)
        destination[i] = static_cast<char>(bits >> (4 * i) & 0x0F);
}

long KXNetworkBufferGetL(const char* source) {
    if (!source)
        return 0;
    // Bytes above 0x7F, which no sender writes, are read as negative numbers: they set all bits above them,
    // too. Byte 0 joins in only after the number has been widened, so it sets those of the whole long.
    std::uint32_t word = 0;
    for (int i = 1; i < 8; ++i)
        word |= static_cast<std::uint32_t>(static_cast<std::int8_t>(source[i])) << (4 * i);
    return static_cast<long>(static_cast<std::int32_t>(word)) | static_cast<std::int8_t>(source[0]);
}

void KXNetworkBufferPutF(char* destination, float value) {
    if (destination)
        std::memcpy(destination, &value, sizeof value);
}

float KXNetworkBufferGetF(const char* source) {
    float value = 0;
    if (source)
        std::memcpy(&value, source, sizeof value);
    return value;
}

KXNetworkBuffer::KXNetworkBuffer(const char* data, int length) {
    if (data && length > 0)
        _reserve(length);
    appendString(data, length);
}

KXNetworkBuffer::~KXNetworkBuffer() { std::free(_buf); }

// Makes room for that many bytes in all, and no more.
void KXNetworkBuffer::_reserve(int length) {
    if (length <= _capacity)
        return;
    void* block = std::realloc(_buf, static_cast<std::size_t>(length));
    if (!block)
        throw std::bad_alloc();
    _buf = static_cast<char*>(block);
    _capacity = length;
}

// Lengthens the buffer and returns where the new bytes go. The room at least doubles, so that a message built
// of many small values is not copied once for each of them.
char* KXNetworkBuffer::_grow(int length) {
    if (length > longestBuffer - _bufLen)
        throw std::bad_alloc();
    const int needed = _bufLen + length;
    if (needed > _capacity)
        _reserve(std::max({needed, _capacity <= longestBuffer / 2 ? _capacity * 2 : longestBuffer, 32}));
    char* end = _buf + _bufLen;
    _bufLen = needed;
    return end;
}

// How many of the next @a wanted bytes the buffer really holds.
int KXNetworkBuffer::_held(int wanted) const {
    return std::clamp(_readIndex < _bufLen ? _bufLen - _readIndex : 0, 0, wanted);
}

void KXNetworkBuffer::_advance(int length) {
    _readIndex = length > longestBuffer - _readIndex ? longestBuffer : _readIndex + length;
}

void KXNetworkBuffer::_readSlot(char* slot) {
    if (const int held = _held(KXNetworkBufferLongSize); held > 0)
        std::memcpy(slot, _buf + _readIndex, static_cast<std::size_t>(held));
    _advance(KXNetworkBufferLongSize);
}

void KXNetworkBuffer::appendString(const char* data, int length) {
    if (data && length > 0)
        std::memcpy(_grow(length), data, static_cast<std::size_t>(length));
}

void KXNetworkBuffer::appendLong(long value) { KXNetworkBufferPutL(_grow(KXNetworkBufferLongSize), value); }

void KXNetworkBuffer::appendFloat(float value) {
    // The half that a float leaves unused goes out as zeros, so that no peer reads what the memory held
    // before.
    char slot[8] = {};
    KXNetworkBufferPutF(slot, value);
    std::memcpy(_grow(KXNetworkBufferLongSize), slot, sizeof slot);
}

void KXNetworkBuffer::resetReadIndex() { _readIndex = 0; }

char* KXNetworkBuffer::readString(int length) {
    const int wanted = std::clamp(length, 0, _bufLen);
    char* bytes = newBlock(wanted);
    if (const int held = _held(wanted); bytes && held > 0)
        std::memcpy(bytes, _buf + _readIndex, static_cast<std::size_t>(held));
    _advance(wanted);
    return bytes;
}

const char* KXNetworkBuffer::readStringTemp(int length) {
    const int wanted = std::clamp(length, 0, _bufLen);
    const int held = _held(wanted);
    const char* text = held > 0 ? KXTempString("%.*s", held, _buf + _readIndex) : KXTempString("%s", "");
    _advance(wanted);
    return text;
}

long KXNetworkBuffer::readLong() {
    char slot[8] = {};
    _readSlot(slot);
    return KXNetworkBufferGetL(slot);
}

float KXNetworkBuffer::readFloat() {
    char slot[8] = {};
    _readSlot(slot);
    return KXNetworkBufferGetF(slot);
}

char* KXNetworkBuffer::buffer() const {
    char* copy = newBlock(_bufLen);
    if (copy && _bufLen > 0)
        std::memcpy(copy, _buf, static_cast<std::size_t>(_bufLen));
    return copy;
}

int KXNetworkBuffer::bufferLength() const { return _bufLen; }

bool KXNetworkBuffer::hasMoreData() const { return _readIndex < _bufLen; }

const char* KXNetworkBuffer::description() const {
    return KXTempString("KXNetworkBuffer: _bufLen(%d), _readIndex(%d)", _bufLen, _readIndex);
}

KXNetworkBuffer* KXNetworkMergeBuffers(const KXNetworkBuffer* first, const KXNetworkBuffer* second) {
    const int firstLength = first ? first->bufferLength() : 0;
    const int secondLength = second ? second->bufferLength() : 0;
    if (secondLength > longestBuffer - firstLength)
        throw std::bad_alloc();
    auto merged = std::make_unique<KXNetworkBuffer>();
    merged->_reserve(firstLength + secondLength);
    if (first)
        merged->appendString(first->_bytes(), firstLength);
    if (second)
        merged->appendString(second->_bytes(), secondLength);
    return merged.release();
}
