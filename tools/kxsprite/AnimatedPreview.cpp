#include "AnimatedPreview.h"

#include "Files.h"
#include "GifFile.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr std::int64_t largestSide = 16384, mostPixels = std::int64_t{1} << 27; // of all frames together

/// The largest width and height of the frames.
SheetSize fullSize(const Animation& animation) {
    SheetSize size = {1, 1};
    for (const Frame& frame : animation.frames) {
        size.width = std::max(size.width, frame.bounds.width);
        size.height = std::max(size.height, frame.bounds.height);
    }
    return size;
}

/// The part of the sheet that a game would show.
KXImage picture(const KXImage& sheet, const Frame& frame, const SheetSize& size, int scale) {
    const auto& [x, y, width, height] = frame.bounds;
    const KXPoint corner = {std::trunc(x), std::trunc(y)};
    const KXImage part = sheet.part({corner,
                                     {std::trunc(x + static_cast<float>(width)) - corner.x,
                                      std::trunc(y + static_cast<float>(height)) - corner.y}});
    KXImage canvas(size.width, size.height);
    canvas.paste(part, 0, 0);
    return canvas.scaled(size.width * scale, size.height * scale, KXFilterNearest);
}

/// Counts the hundredths of a second that pictures last, so that what is rounded does not add up.
class Clock {
public:
    int pass(std::int64_t milliseconds) {
        constexpr std::int64_t least = 2, most = 65535; // less than 2 is shown as 10 by most programs
        _end += milliseconds;
        const std::int64_t time = std::clamp((_end + 5) / 10 - _shown, least, most);
        _shown += time;
        return static_cast<int>(time);
    }

private:
    std::int64_t _end = 0, _shown = 0;
};
} // namespace

void previewMoving(const Animation& animation, const std::string& sheet, const PreviewSettings& settings) {
    const SheetSize size = fullSize(animation);
    const std::int64_t width = std::int64_t{size.width} * settings.scale,
                       height = std::int64_t{size.height} * settings.scale;
    if (width > largestSide || height > largestSide ||
        width * height > mostPixels / static_cast<std::int64_t>(animation.frames.size()))
        throw Fault("is too large to be drawn");
    KXImage pixels;
    if (!pixels.load(sheet.c_str()))
        throw Fault("the sheet " + quoted(sheet) + " is no image that can be read");
    GifFile file(settings.output, static_cast<int>(width), static_cast<int>(height), animation.loops != 0);
    Clock clock;
    for (const Frame& frame : animation.frames)
        file.add(picture(pixels, frame, size, settings.scale),
                 clock.pass(std::max<std::int64_t>(frame.duration, 1) * settings.stepMilliseconds));
    file.save();
}
