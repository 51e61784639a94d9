#include "Chunks.h"
#include "Palette.h"

#include <utility>

namespace {
constexpr std::size_t headerSize = 128, frameHeaderSize = 16, chunkHeaderSize = 6;
constexpr unsigned fileMagic = 0xA5E0, frameMagic = 0xF1FA;
constexpr int largestSide = 16384;
constexpr std::int64_t mostPixels = std::int64_t{64} << 20;

enum Chunk : unsigned {
    OldPalette = 0x0004,
    OldestPalette = 0x0011,
    OldestPaletteAsWritten = 0x000B,
    Layer = 0x2004,
    Cel = 0x2005,
    Tags = 0x2018,
    Palette = 0x2019,
    Slices = 0x2021,
    Slice = 0x2022
};

/// What a file that is read frame by frame has come to.
class AseReader {
public:
    explicit AseReader(std::string_view bytes) : _file(bytes) {}

    AseSprite read() {
        readHeader();
        for (int i = 0; i < _frames; ++i) {
            _file.enterFrame(i);
            readFrame();
        }
        return std::move(_sprite);
    }

private:
    void readHeader() {
        AseBytes header = _file.piece(headerSize);
        header.skip(4); // the size, which may be wrong
        if (header.u16() != fileMagic)
            header.fail("is no .aseprite file");
        _frames = header.u16();
        readCanvas(header);
        const std::uint32_t flags = header.u32();
        _opacityCounts = flags & 1;
        _sprite.composesGroups = flags & 2;
        _speed = header.u16();
        header.skip(8);
        const std::uint8_t transparent = header.u8();
        _sprite.transparentIndex = _sprite.bytesPerPixel == 1 ? transparent : 0;
        if (_frames == 0)
            header.fail("has no frames");
        _file.expect(static_cast<std::size_t>(_frames), frameHeaderSize, "frames");
    }

    void readCanvas(AseBytes& header) {
        _sprite.width = header.u16();
        _sprite.height = header.u16();
        if (_sprite.width < 1 || _sprite.height < 1 || _sprite.width > largestSide ||
            _sprite.height > largestSide || canvasPixels() > mostPixels)
            header.fail("the canvas is " + std::to_string(_sprite.width) + " x " +
                        std::to_string(_sprite.height) +
                        " pixels; at most 16384 a side and 64 million in all");
        const int bits = header.u16();
        if (bits != 8 && bits != 16 && bits != 32)
            header.fail("a pixel has " + std::to_string(bits) + " bits, instead of 8, 16 or 32");
        _sprite.bytesPerPixel = bits / 8;
    }

    std::int64_t canvasPixels() const { return std::int64_t{_sprite.width} * _sprite.height; }

    void readFrame() {
        const AseBytes begin = _file;
        const std::uint32_t size = _file.u32();
        if (size < frameHeaderSize || size - 4 > _file.left())
            begin.fail("the frame claims " + std::to_string(size) + " bytes");
        AseBytes frame = _file.piece(size - 4);
        if (frame.u16() != frameMagic)
            begin.fail("this is no frame");
        const std::uint32_t oldChunks = frame.u16();
        const int milliseconds = frame.u16();
        frame.skip(2);
        const std::uint32_t newChunks = frame.u32(), chunks = newChunks ? newChunks : oldChunks;
        frame.expect(chunks, chunkHeaderSize, "chunks");
        _sprite.frames.push_back({milliseconds ? milliseconds : _speed, {}, 0});
        for (std::uint32_t i = 0; i < chunks; ++i) {
            frame.enterChunk(static_cast<int>(i));
            readChunk(frame);
        }
        finishCels(begin, _sprite);
        keepPalette(begin);
    }

    void readChunk(AseBytes& frame) {
        const AseBytes begin = frame;
        const std::uint32_t size = frame.u32();
        if (size < chunkHeaderSize || size - 4 > frame.left())
            begin.fail("the chunk claims " + std::to_string(size) + " bytes");
        AseBytes chunk = frame.piece(size - 4);
        switch (chunk.u16()) {
        case OldPalette:
            return readOldPalette(chunk, 8);
        case OldestPalette:
        case OldestPaletteAsWritten:
            return readOldPalette(chunk, 6);
        case Palette:
            if (_sprite.bytesPerPixel == 1)
                _palette.readChunk(chunk);
            return;
        case Layer:
            return readLayer(chunk, _opacityCounts, _sprite);
        case Cel:
            return readCel(chunk, _sprite, _budget);
        case Tags:
            return readTags(chunk, _frames, _sprite);
        case Slices:
            return readSlices(chunk, _sprite);
        case Slice:
            return readSlice(chunk, _sprite);
        default: // nothing that is seen
            return;
        }
    }

    // Palettes of other sprites are for their artist only.
    void readOldPalette(AseBytes& chunk, int bits) {
        if (_sprite.bytesPerPixel == 1)
            _palette.readOldChunk(chunk, bits);
    }

    void keepPalette(const AseBytes& at) {
        if (_sprite.bytesPerPixel != 1)
            return;
        if (_palette.takeChanged()) {
            _budget.take(_palette.palette().size() * sizeof(KXPixel), at);
            _sprite.palettes.push_back(_palette.palette());
        }
        _sprite.frames.back().palette = _sprite.palettes.size() - 1;
    }

    AseBytes _file;
    AseSprite _sprite;
    AsePaletteReader _palette;
    AseBudget _budget;
    int _frames = 0, _speed = 0;
    bool _opacityCounts = false;
};
} // namespace

AseSprite readAseprite(std::string_view bytes) { return AseReader(bytes).read(); }

bool isAseprite(std::string_view bytes) { return bytes.size() >= 6 && bytes.substr(4, 2) == "\xE0\xA5"; }
