#include <Kobaltrix/KXIO.h>

#include <Kobaltrix/KXNetworkBuffer.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

// The file or the network buffer behind @a io, null unless it is of that kind.
static FILE* fileOf(KXIOBuffer io) { return io.kind == 0 ? static_cast<FILE*>(io.target) : nullptr; }

static KXNetworkBuffer* networkOf(KXIOBuffer io) {
    return io.kind == 1 ? static_cast<KXNetworkBuffer*>(io.target) : nullptr;
}

KXIOBuffer KXIOBufferWith(FILE* file, KXNetworkBuffer* buffer) {
    if (file)
        return {file, 0};
    return {buffer, 1};
}

void KXIOPutL(long value, KXIOBuffer io) {
    if (FILE* file = fileOf(io))
        KXPutL(value, file);
    else if (KXNetworkBuffer* network = networkOf(io))
        network->appendLong(value);
}

void KXIOPutF(float value, KXIOBuffer io) {
    if (FILE* file = fileOf(io))
        KXPutF(value, file);
    else if (KXNetworkBuffer* network = networkOf(io))
        network->appendFloat(value);
}

void KXIOPutPoint(KXPoint point, KXIOBuffer io) {
    KXIOPutF(point.x, io);
    KXIOPutF(point.y, io);
}

void KXIOPutColor(KXColor color, KXIOBuffer io) {
    for (const float channel : {color.r, color.g, color.b, color.a})
        KXIOPutF(channel, io);
}

void KXIOPutString(const char* string, KXIOBuffer io) {
    if (FILE* file = fileOf(io)) {
        KXPutString(string, file);
    } else if (KXNetworkBuffer* network = networkOf(io)) {
        const std::size_t bytes = string ? std::strlen(string) + 1 : 0;
        if (bytes > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw std::bad_alloc(); // no buffer holds as much
        network->appendLong(static_cast<long>(bytes));
        network->appendString(string, static_cast<int>(bytes));
    }
}

long KXIOGetL(KXIOBuffer io) {
    if (FILE* file = fileOf(io))
        return KXGetL(file);
    KXNetworkBuffer* network = networkOf(io);
    return network ? network->readLong() : 0;
}

float KXIOGetF(KXIOBuffer io) {
    if (FILE* file = fileOf(io))
        return KXGetF(file);
    KXNetworkBuffer* network = networkOf(io);
    return network ? network->readFloat() : 0.0f;
}

KXPoint KXIOGetPoint(KXIOBuffer io) {
    const float x = KXIOGetF(io);
    return {x, KXIOGetF(io)};
}

KXColor KXIOGetColor(KXIOBuffer io) {
    const float r = KXIOGetF(io);
    const float g = KXIOGetF(io);
    const float b = KXIOGetF(io);
    return KXMakeColor(r, g, b, KXIOGetF(io));
}

char* KXIOGetString(KXIOBuffer io) {
    if (FILE* file = fileOf(io))
        return KXGetString(file);
    KXNetworkBuffer* network = networkOf(io);
    if (!network)
        return nullptr;
    const long length = network->readLong();
    // A temporary string may be written to; the buffer only hands it out as one that may not.
    return length < 1 ? nullptr : const_cast<char*>(network->readStringTemp(static_cast<int>(length)));
}

int KXIOIsIntact(KXIOBuffer io) {
    if (FILE* file = fileOf(io))
        return KXStreamIsIntact(file);
    const KXNetworkBuffer* network = networkOf(io);
    return network && !network->_wasReadBeyondEnd() ? -1 : 0;
}
