// Values in files and in network messages, read from any bytes, and read back as they were written.

#include "Fuzz.h"

#include <Kobaltrix/KXIO.h>
#include <Kobaltrix/KXNetworkBuffer.h>

#include <cstdlib>
#include <memory>

static void readFrom(KXIOBuffer io, const std::string& kinds) {
    for (const char kind : kinds)
        switch (kind & 7) {
        case 0:
            KXIOGetL(io);
            break;
        case 1:
            KXIOGetF(io);
            break;
        case 2:
            KXIOGetPoint(io);
            break;
        case 3:
            KXIOGetColor(io);
            break;
        case 4:
            if (io.kind == 1)
                std::free(static_cast<KXNetworkBuffer*>(io.target)->readString(kind * 1000 - 8000));
            break;
        default:
            KXIOGetString(io);
        }
}

static void writeAndReadBack(KXIOBuffer io, long number, const std::string& text) {
    KXIOPutL(number, io);
    KXIOPutString(text.c_str(), io);
    KXIOPutPoint({1.5f, -2}, io);
    if (io.kind == 0)
        std::rewind(static_cast<FILE*>(io.target));
    require(static_cast<std::int32_t>(KXIOGetL(io)) == number, "a number is read as it was written");
    const char* const read = KXIOGetString(io);
    require(read && read == std::string(text.c_str()), "a text is read as it was written");
    require(KXIOGetPoint(io).y == -2, "and what comes behind it");
}

void fuzz(FuzzBytes bytes) {
    const std::string kinds = bytes.text(), text = bytes.text();
    const auto number = bytes.number<std::int32_t>();
    std::string content = bytes.rest();
    KXNetworkBuffer buffer(content.data(), static_cast<int>(content.size())), written;
    readFrom(KXIOBufferWith(nullptr, &buffer), kinds);
    buffer.description();
    delete KXNetworkMergeBuffers(&buffer, &written);
    writeAndReadBack(KXIOBufferWith(nullptr, &written), number, text);

    content.resize(content.size() + 600);
    FILE* const file = fmemopen(content.data(), content.size(), "r+b");
    readFrom(KXIOBufferWith(file, nullptr), kinds);
    std::rewind(file);
    writeAndReadBack(KXIOBufferWith(file, nullptr), number, text);
    std::fclose(file);
}
