#include <Kobaltrix/KXImage.h>

#include "core/ground/ColorByte.h"
#include "core/ground/ErrorSlot.h"
#include "image/Box.h"
#include "image/ImageFile.h"

#include <SDL_error.h>
#include <SDL_image.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

KXPixel KXPixelOf(KXColor color) {
    return {_KXColorByte(color.r), _KXColorByte(color.g), _KXColorByte(color.b), _KXColorByte(color.a)};
}

KXColor KXColorOf(KXPixel pixel) { return KXMakeColori(pixel.r, pixel.g, pixel.b, pixel.a); }

KXImage::KXImage() : _width(0), _height(0) {}

// Whether there may be such an image; if not, the error slot says so.
static bool isAllowed(int width, int height) {
    const std::uint32_t most = _KXMaximumImagePixels();
    if (width > 0 && height > 0 && std::uint64_t(width) * std::uint64_t(height) <= most)
        return true;
    _KXReportError("Unable to make an image of %d x %d pixels, where %u are allowed", width, height, most);
    return false;
}

KXImage::KXImage(int width, int height, KXColor color) : KXImage() {
    if (!isAllowed(width, height))
        return;
    _pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), KXPixelOf(color));
    _width = width;
    _height = height;
}

KXImage::KXImage(const char* path) : KXImage() {
    if (!load(path))
        throw std::bad_alloc();
}

KXImage KXImage::fromPixels(int width, int height, const void* rgba) {
    if (!rgba) {
        _KXReportError("Unable to make an image of no pixels");
        return {};
    }
    KXImage image(width, height);
    if (!image._pixels.empty())
        std::memcpy(image._pixels.data(), rgba, image._pixels.size() * sizeof(KXPixel));
    return image;
}

KXImage::KXImage(const KXImage& other) = default;
KXImage::~KXImage() = default;
KXImage& KXImage::operator=(const KXImage& other) {
    if (this != &other)
        *this = KXImage(other); // complete before anything changes
    return *this;
}

KXImage::KXImage(KXImage&& other) noexcept
    : _pixels(std::move(other._pixels)), _width(std::exchange(other._width, 0)),
      _height(std::exchange(other._height, 0)) {
    other._pixels.clear();
}

KXImage& KXImage::operator=(KXImage&& other) noexcept {
    KXImage taken(std::move(other));
    _pixels.swap(taken._pixels);
    _width = taken._width;
    _height = taken._height;
    return *this;
}

// Why an image could not be decoded.
static void report(const char* name, const _KXDecodedImage& decoded) {
    if (decoded.isTooLarge)
        _KXReportError("Unable to load an image (%s): more than %u pixels", name, _KXMaximumImagePixels());
    else
        _KXReportError("Unable to load an image (%s): %s", name, SDL_GetError());
}

// The same in the format of images. Empty, with a text in the error slot, if there was none.
static KXImage imageOf(const char* name, const _KXDecodedImage& decoded) {
    const _KXSurface pixels(decoded.surface
                                ? SDL_ConvertSurfaceFormat(decoded.surface.get(), SDL_PIXELFORMAT_RGBA32, 0)
                                : nullptr);
    if (!pixels) {
        report(name, decoded);
        return {};
    }
    KXImage image(pixels->w, pixels->h);
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(image.row(y),
                    static_cast<const char*>(pixels->pixels) + std::ptrdiff_t{y} * pixels->pitch,
                    static_cast<std::size_t>(pixels->w) * sizeof(KXPixel));
    return image;
}

int KXImage::load(const char* path) {
    if (!path) {
        _KXReportError("Unable to load an image: no path");
        return 0;
    }
    KXImage loaded = imageOf(path, _KXDecodeImageFile(path));
    if (loaded._pixels.empty())
        return 0;
    *this = std::move(loaded);
    return -1;
}

int KXImage::loadFromMemory(const void* bytes, std::size_t size) {
    if (!bytes || size == 0) {
        _KXReportError("Unable to load an image: no bytes");
        return 0;
    }
    KXImage loaded = imageOf("in memory", _KXDecodeImage(bytes, size));
    if (loaded._pixels.empty())
        return 0;
    *this = std::move(loaded);
    return -1;
}

_KXSurface _KXSurfaceOf(const KXImage& image) {
    if (!image.row(0)) {
        SDL_SetError("the image is empty");
        return nullptr;
    }
    // It only reads what it is given.
    return _KXSurface(SDL_CreateRGBSurfaceWithFormatFrom(const_cast<KXPixel*>(image.row(0)), image.width(),
                                                         image.height(), 32, image.width() * 4,
                                                         SDL_PIXELFORMAT_RGBA32));
}

int KXImage::writeToPNG(const char* path) const {
    std::string reason = "no path";
    const _KXSurface surface = path ? _KXSurfaceOf(*this) : nullptr;
    if (surface && _KXStoreImage(path, *surface, IMG_SavePNG_RW, reason))
        return -1;
    _KXReportError("Unable to write a PNG file (%s): %s", path ? path : "",
                   path && !surface ? SDL_GetError() : reason.c_str());
    return 0;
}

unsigned char* KXImage::copyPNG(std::size_t* size) const {
    if (size)
        *size = 0;
    std::string bytes, reason = "no memory";
    const _KXSurface surface = _KXSurfaceOf(*this);
    const bool encoded = surface && _KXEncodeImage(*surface, IMG_SavePNG_RW, bytes, reason);
    void* const block = encoded ? std::malloc(bytes.size()) : nullptr;
    if (!block) {
        _KXReportError("Unable to make a PNG file: %s", surface ? reason.c_str() : SDL_GetError());
        return nullptr;
    }
    std::memcpy(block, bytes.data(), bytes.size());
    if (size)
        *size = bytes.size();
    return static_cast<unsigned char*>(block);
}

const KXPixel* KXImage::row(int y) const {
    return y < 0 || y >= _height
               ? nullptr
               : _pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(_width);
}

KXPixel* KXImage::row(int y) { return const_cast<KXPixel*>(std::as_const(*this).row(y)); }

KXColor KXImage::getPixel(int x, int y) const {
    const KXPixel* const pixels = x < 0 || x >= _width ? nullptr : row(y);
    return pixels ? KXColorOf(pixels[x]) : KXColor{-1, -1, -1, -1};
}

int KXImage::setPixel(int x, int y, KXColor color) {
    KXPixel* const pixels = x < 0 || x >= _width ? nullptr : row(y);
    if (pixels)
        pixels[x] = KXPixelOf(color);
    return pixels ? -1 : 0;
}

void KXImage::fill(KXColor color) { std::fill(_pixels.begin(), _pixels.end(), KXPixelOf(color)); }
