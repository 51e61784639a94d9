#include "support/Image.h"

#include <SDL_image.h>
#include <SDL_opengl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

std::ostream& operator<<(std::ostream& out, const Pixel& pixel) {
    return out << '(' << +pixel.r << ' ' << +pixel.g << ' ' << +pixel.b << ' ' << +pixel.a << ')';
}

const Pixel& Image::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height)
        throw std::out_of_range("pixel outside the image");
    return pixels[static_cast<std::size_t>(y * width + x)];
}

static Image blank(int width, int height) {
    return {width, height, std::vector<Pixel>(static_cast<std::size_t>(width * height))};
}

Image Image::of(KXWindow& window) {
    int width = 0, height = 0;
    window._drawableSize(&width, &height);
    Image image = blank(width, height);
    auto* bytes = reinterpret_cast<char*>(image.pixels.data());
    window._readPixels(bytes, GL_RGBA);
    window._flipPixels(bytes, GL_RGBA);
    for (Pixel& pixel : image.pixels)
        pixel.a = 255; // whether a window has alpha at all is the platform's choice
    return image;
}

Image Image::of(KXTexture& texture) {
    Image image = blank(static_cast<int>(texture.size().width), static_cast<int>(texture.size().height));
    texture.bind();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
    return image;
}

Image Image::fromFile(const std::string& path) {
    SDL_Surface* file = IMG_Load(path.c_str());
    if (!file)
        return {};
    SDL_Surface* surface = SDL_ConvertSurfaceFormat(file, SDL_PIXELFORMAT_RGBA32, 0);
    SDL_FreeSurface(file);
    Image image = blank(surface->w, surface->h); // as are the surface's rows, one behind the other
    std::memcpy(image.pixels.data(), surface->pixels, image.pixels.size() * sizeof(Pixel));
    SDL_FreeSurface(surface);
    return image;
}

void Image::save(const std::string& path) const {
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(const_cast<Pixel*>(pixels.data()), width,
                                                              height, 32, width * 4, SDL_PIXELFORMAT_RGBA32);
    IMG_SavePNG(surface, path.c_str());
    SDL_FreeSurface(surface);
}

bool isNear(Pixel p, Pixel q, int tolerance) {
    return std::max({std::abs(p.r - q.r), std::abs(p.g - q.g), std::abs(p.b - q.b), std::abs(p.a - q.a)}) <=
           tolerance;
}

int differingPixels(const Image& a, const Image& b, int tolerance) {
    if (a.width != b.width || a.height != b.height)
        return static_cast<int>(std::max(a.pixels.size(), b.pixels.size()));
    int different = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        different += !isNear(a.pixels[i], b.pixels[i], tolerance);
    return different;
}
