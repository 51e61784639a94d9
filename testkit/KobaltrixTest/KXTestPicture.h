#pragma once

#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

/// @file
/// What was drawn: pixels to look at, and pictures to compare it with.

class KXTexture;
class KXWindow;

/// What a comparison or another expectation has found.
struct KXTestResult {
    /// Why it does not hold, empty if it does: `EXPECT_EQ(gallery.compare(...).message, "")`.
    std::string message;

    /// Whether it holds.
    explicit operator bool() const { return message.empty(); }
};

/// One pixel, 0 to 255 a channel.
struct KXTestPixel {
    uint8_t r; ///< Red.
    uint8_t g; ///< Green.
    uint8_t b; ///< Blue.
    uint8_t a; ///< Alpha.

    /// Whether no channel differs by more than the tolerance.
    bool isNear(KXTestPixel other, int tolerance) const;
};
/// Whether all channels are the same.
bool operator==(KXTestPixel a, KXTestPixel b);
/// Whether a channel differs.
bool operator!=(KXTestPixel a, KXTestPixel b);
/// Writes "(255 0 0 255)".
std::ostream& operator<<(std::ostream& out, KXTestPixel pixel);

/// How far two pictures may lie apart: drivers round edges in different ways.
struct KXTestTolerance {
    /// @param ofChannels see #channel. @param ofPixels see #pixels.
    KXTestTolerance(int ofChannels = 2, int ofPixels = 0) : channel(ofChannels), pixels(ofPixels) {}

    int channel; ///< By how much a channel may differ.
    int pixels;  ///< How many pixels may differ by more.
};

/// A picture in memory, the first row at the top.
struct KXTestPicture {
    int width = 0;                   ///< Pixels.
    int height = 0;                  ///< Pixels.
    std::vector<KXTestPixel> pixels; ///< Row by row.

    /// What was drawn into a window since its last swap, all its pixels; opaque, since what alpha a window
    /// holds is the platform's choice. Empty for a closed window.
    static KXTestPicture of(KXWindow& window);
    /// A texture's pixels; empty if it is empty.
    static KXTestPicture of(KXTexture& texture);
    /// An image file; empty if it cannot be read.
    static KXTestPicture fromFile(const std::string& path);
    /// Writes a PNG file; false if it cannot.
    bool save(const std::string& path) const;

    /// The pixel at (x, y). Throws std::out_of_range outside the picture.
    const KXTestPixel& at(int x, int y) const;
    /// A part of it; what lies outside is transparent black.
    KXTestPicture part(int left, int top, int partWidth, int partHeight) const;
    /// In how many pixels a channel differs by more than the tolerance: all of the larger picture's if the
    /// sizes differ.
    int differing(const KXTestPicture& other, int tolerance = 0) const;
    /// White where a channel differs by more than the tolerance, black elsewhere.
    KXTestPicture difference(const KXTestPicture& other, int tolerance = 0) const;
};

/// A folder of reference pictures that a game's own are compared with.
///
/// With KOBALTRIX_UPDATE_GOLDEN set in the environment every comparison writes its picture anew instead, and
/// holds: look at each before you keep it.
///
/// How far pictures may lie apart is written where they lie: the file `tolerances.txt` in the folder has
/// lines of a picture's name, how much a channel may differ and how many pixels may differ by more, and why
/// behind a `#`. Others may differ by 2 in any channel and in no pixel by more.
///
///     menu   3 200   # rounded edges
class KXTestGallery {
public:
    /// @param folder where the pictures lie, or shall lie.
    explicit KXTestGallery(const std::string& folder);

    /// Compares a picture with the reference NAME.png, by the tolerance that stands in the file. If it fails,
    /// NAME.expected.png, NAME.actual.png and NAME.difference.png are written into the working folder.
    /// @param picture the game's own. @param name may hold folders, which are no part of those three names.
    KXTestResult compare(const KXTestPicture& picture, const std::string& name) const;
    /// The same, by a tolerance of the caller's.
    KXTestResult compare(const KXTestPicture& picture, const std::string& name,
                         KXTestTolerance tolerance) const;

private:
    std::string _folder;
    std::map<std::string, KXTestTolerance> _tolerances;
};
