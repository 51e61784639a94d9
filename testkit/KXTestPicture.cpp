#include "KobaltrixTest/KXTestPicture.h"

#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>

static int apart(KXTestPixel p, KXTestPixel q) {
    return std::max({std::abs(p.r - q.r), std::abs(p.g - q.g), std::abs(p.b - q.b), std::abs(p.a - q.a)});
}

bool KXTestPixel::isNear(KXTestPixel other, int tolerance) const { return apart(*this, other) <= tolerance; }
bool operator==(KXTestPixel a, KXTestPixel b) { return apart(a, b) == 0; }
bool operator!=(KXTestPixel a, KXTestPixel b) { return apart(a, b) != 0; }

std::ostream& operator<<(std::ostream& out, KXTestPixel pixel) {
    return out << '(' << +pixel.r << ' ' << +pixel.g << ' ' << +pixel.b << ' ' << +pixel.a << ')';
}

// Takes over rows of four bytes a pixel, one behind the other.
static KXTestPicture pictureOf(int width, int height, const void* bytes) {
    KXTestPicture picture;
    if (!bytes || width < 1 || height < 1)
        return picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    std::memcpy(picture.pixels.data(), bytes, picture.pixels.size() * sizeof(KXTestPixel));
    return picture;
}

KXTestPicture KXTestPicture::of(KXWindow& window) {
    const KXImage image = window.copyImage();
    return pictureOf(image.width(), image.height(), image.row(0));
}

KXTestPicture KXTestPicture::of(KXTexture& texture) {
    const KXImage image = texture.copyImage();
    return pictureOf(image.width(), image.height(), image.row(0));
}

KXTestPicture KXTestPicture::fromFile(const std::string& path) {
    KXImage image;
    image.load(path.c_str());
    return pictureOf(image.width(), image.height(), image.row(0));
}

bool KXTestPicture::save(const std::string& path) const {
    return KXImage::fromPixels(width, height, pixels.data()).writeToPNG(path.c_str()) != 0;
}

const KXTestPixel& KXTestPicture::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height)
        throw std::out_of_range("pixel outside the picture");
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
}

KXTestPicture KXTestPicture::part(int left, int top, int partWidth, int partHeight) const {
    KXTestPicture result;
    result.width = std::max(partWidth, 0);
    result.height = std::max(partHeight, 0);
    for (int y = top; y < top + result.height; ++y)
        for (int x = left; x < left + result.width; ++x) {
            const bool inside = x >= 0 && y >= 0 && x < width && y < height;
            result.pixels.push_back(inside ? at(x, y) : KXTestPixel());
        }
    return result;
}

int KXTestPicture::differing(const KXTestPicture& other, int tolerance) const {
    if (width != other.width || height != other.height)
        return static_cast<int>(std::max(pixels.size(), other.pixels.size()));
    int count = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i)
        count += !pixels[i].isNear(other.pixels[i], tolerance);
    return count;
}

KXTestPicture KXTestPicture::difference(const KXTestPicture& other, int tolerance) const {
    KXTestPicture result = part(0, 0, std::max(width, other.width), std::max(height, other.height));
    const KXTestPicture theirs = other.part(0, 0, result.width, result.height);
    for (std::size_t i = 0; i < result.pixels.size(); ++i)
        result.pixels[i] = result.pixels[i].isNear(theirs.pixels[i], tolerance)
                               ? KXTestPixel{0, 0, 0, 255}
                               : KXTestPixel{255, 255, 255, 255};
    return result;
}

// A path of a text in UTF-8, and the other way round.
static std::filesystem::path pathOf(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}
static std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

KXTestGallery::KXTestGallery(const std::string& folder) : _folder(folder) {
    std::ifstream ledger(pathOf(folder) / "tolerances.txt");
    for (std::string line; std::getline(ledger, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string name;
        KXTestTolerance tolerance;
        if (words >> name >> tolerance.channel >> tolerance.pixels)
            _tolerances[name] = tolerance;
    }
}

KXTestResult KXTestGallery::compare(const KXTestPicture& picture, const std::string& name) const {
    const auto kept = _tolerances.find(name);
    return compare(picture, name, kept == _tolerances.end() ? KXTestTolerance() : kept->second);
}

// What is wrong with a picture of the right size, in words.
static std::string differencesOf(const KXTestPicture& actual, const KXTestPicture& expected,
                                 KXTestTolerance tolerance, int differing) {
    std::ostringstream words;
    words << differing << " of " << expected.pixels.size() << " pixels differ by more than "
          << tolerance.channel << ", of which " << tolerance.pixels << " may";
    for (std::size_t i = 0; i < expected.pixels.size(); ++i)
        if (!actual.pixels[i].isNear(expected.pixels[i], tolerance.channel)) {
            const auto width = static_cast<std::size_t>(expected.width);
            words << ", the first at " << i % width << ' ' << i / width << ": " << actual.pixels[i]
                  << ", not " << expected.pixels[i];
            break;
        }
    return words.str();
}

KXTestResult KXTestGallery::compare(const KXTestPicture& picture, const std::string& name,
                                    KXTestTolerance tolerance) const {
    const std::filesystem::path path = pathOf(_folder) / pathOf(name + ".png");
    const std::string file = textOf(path);
    if (std::getenv("KOBALTRIX_UPDATE_GOLDEN")) {
        std::error_code ignored;
        std::filesystem::create_directories(path.parent_path(), ignored);
        return {picture.save(file) ? "" : file + " cannot be written"};
    }
    const KXTestPicture expected = KXTestPicture::fromFile(file);
    const int differing = picture.differing(expected, tolerance.channel);
    if (differing <= tolerance.pixels && !expected.pixels.empty())
        return {};
    std::ostringstream words;
    words << name << ": ";
    const std::string stem = textOf(path.stem());
    picture.save(stem + ".actual.png");
    if (expected.pixels.empty()) {
        words << file << " cannot be read; see " << stem << ".actual.png";
        return {words.str()};
    }
    expected.save(stem + ".expected.png");
    picture.difference(expected, tolerance.channel).save(stem + ".difference.png");
    if (picture.width != expected.width || picture.height != expected.height)
        words << "it is " << picture.width << " x " << picture.height << ", not " << expected.width << " x "
              << expected.height;
    else
        words << differencesOf(picture, expected, tolerance, differing);
    words << "; see " << stem << ".actual.png and " << stem << ".difference.png";
    return {words.str()};
}
