#include "GifFile.h"

#include "Files.h"

#include <gif_lib.h>

#include <algorithm>
#include <map>
#include <new>

namespace {
constexpr int transparent = 0, mostColors = 255; // beside what is transparent

/// A picture as numbers of colours.
struct Indexed {
    std::vector<GifByteType> pixels;
    std::vector<GifColorType> colors = {{0, 0, 0}}; ///< The first is what is transparent.
};

bool isSeen(const KXPixel& pixel) { return pixel.a >= 128; }

/// With all colours as they are. False if there are too many.
bool indexExactly(const KXPixel* pixels, std::size_t count, Indexed& indexed) {
    std::map<std::uint32_t, GifByteType> known;
    for (const KXPixel *pixel = pixels, *end = pixels + count; pixel != end; ++pixel) {
        if (!isSeen(*pixel)) {
            indexed.pixels.push_back(transparent);
            continue;
        }
        const std::uint32_t color = std::uint32_t{pixel->r} << 16 | std::uint32_t{pixel->g} << 8 | pixel->b;
        const auto next = static_cast<GifByteType>(indexed.colors.size());
        const auto [entry, isNew] = known.emplace(color, next);
        if (isNew && known.size() > mostColors)
            return false;
        if (isNew)
            indexed.colors.push_back({pixel->r, pixel->g, pixel->b});
        indexed.pixels.push_back(entry->second);
    }
    return true;
}

/// With as many colours as there may be, chosen by the library from what can be seen.
void indexNearly(const KXPixel* pixels, std::size_t count, Indexed& indexed) {
    std::vector<GifByteType> red, green, blue;
    for (std::size_t i = 0; i < count; ++i)
        if (isSeen(pixels[i])) {
            red.push_back(pixels[i].r);
            green.push_back(pixels[i].g);
            blue.push_back(pixels[i].b);
        }
    std::vector<GifByteType> chosen(red.size());
    GifColorType colors[256] = {};
    int number = mostColors;
    if (GifQuantizeBuffer(static_cast<unsigned>(red.size()), 1, &number, red.data(), green.data(),
                          blue.data(), chosen.data(), colors) != GIF_OK)
        throw std::bad_alloc();
    indexed = {};
    indexed.colors.insert(indexed.colors.end(), colors, colors + number);
    auto next = chosen.begin();
    for (std::size_t i = 0; i < count; ++i)
        indexed.pixels.push_back(isSeen(pixels[i]) ? static_cast<GifByteType>(*next++ + 1) : transparent);
}

Indexed indexed(const KXImage& picture) {
    const auto count = static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height());
    Indexed result;
    if (!indexExactly(picture.row(0), count, result))
        indexNearly(picture.row(0), count, result);
    return result;
}

int put(GifFileType* gif, const GifByteType* bytes, int count) {
    return static_cast<int>(
        std::fwrite(bytes, 1, static_cast<std::size_t>(count), static_cast<FILE*>(gif->UserData)));
}

int close(GifFileType* gif) { return EGifCloseFile(gif, nullptr); }
} // namespace

GifFile::GifFile(const std::string& path, int width, int height, bool loops)
    : _path(path), _file(path.c_str()), _gif(EGifOpen(_file.stream(), put, nullptr), close), _width(width),
      _height(height) {
    if (!_gif)
        throw std::bad_alloc();
    EGifSetGifVersion(_gif.get(), true);
    require(EGifPutScreenDesc(_gif.get(), width, height, 8, transparent, nullptr));
    if (!loops)
        return;
    const GifByteType forever[] = {1, 0, 0};
    require(EGifPutExtensionLeader(_gif.get(), APPLICATION_EXT_FUNC_CODE));
    require(EGifPutExtensionBlock(_gif.get(), 11, "NETSCAPE2.0"));
    require(EGifPutExtensionBlock(_gif.get(), sizeof forever, forever));
    require(EGifPutExtensionTrailer(_gif.get()));
}

void GifFile::require(int done) const {
    if (done != GIF_OK)
        throw Fault(GifErrorString(_gif->Error), _path);
}

void GifFile::beginPicture(ColorMapObject* colors, int time) {
    GifByteType bytes[4];
    const GraphicsControlBlock control = {DISPOSE_BACKGROUND, false, time, transparent};
    EGifGCBToExtension(&control, bytes);
    require(EGifPutExtension(_gif.get(), GRAPHICS_EXT_FUNC_CODE, sizeof bytes, bytes));
    require(EGifPutImageDesc(_gif.get(), 0, 0, _width, _height, false, colors));
}

void GifFile::add(const KXImage& picture, int time) {
    Indexed numbers = indexed(picture);
    numbers.colors.resize(std::size_t{1} << GifBitSize(static_cast<int>(numbers.colors.size())));
    const std::unique_ptr<ColorMapObject, void (*)(ColorMapObject*)> colors(
        GifMakeMapObject(static_cast<int>(numbers.colors.size()), numbers.colors.data()), GifFreeMapObject);
    if (!colors)
        throw std::bad_alloc();
    beginPicture(colors.get(), time);
    require(EGifPutLine(_gif.get(), numbers.pixels.data(), _width * _height));
}

void GifFile::save() {
    _gif.reset(); // writes the end
    if (!_file.commit())
        throw libraryFault(_path);
}
