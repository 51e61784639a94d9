#pragma once

#include <cstddef>
#include <memory>
#include <string>

/// The bytes of packed tiles, unpacked piece by piece: never more at a time than are asked for, whatever a
/// file claims.
class _KXTileBytes {
public:
    virtual ~_KXTileBytes() = default;
    /// Fills a block. False where there are not so many, or they are broken.
    virtual bool read(void* block, std::size_t size) = 0;
    /// Whether all was read, to the proper end.
    bool isAtEnd() {
        char more = 0;
        return !read(&more, 1) && !isBroken();
    }

protected:
    virtual bool isBroken() const { return false; }
};

/// The bytes of a text in base64. False where it is none.
bool _KXDecodeBase64(const std::string& text, std::string& bytes);

/// @param compression "", "zlib", "gzip" or "zstd"; null for others. @param bytes must outlive it.
std::unique_ptr<_KXTileBytes> _KXUnpackTiles(const std::string& compression, const std::string& bytes);
