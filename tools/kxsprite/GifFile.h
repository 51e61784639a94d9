#pragma once

#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXSaveFile.h>

#include <memory>
#include <string>
#include <vector>

struct ColorMapObject;
struct GifFileType;

/// An animated GIF file. Each picture has its own colours: up to 255 of them exactly, more by the nearest
/// ones. What is less than half opaque is transparent, and all else opaque. Everything throws a Fault that
/// names the file.
class GifFile {
public:
    /// Nothing happens to the file before save().
    GifFile(const std::string& path, int width, int height, bool loops);

    /// Adds a picture of the file's size. @param time in hundredths of a second.
    void add(const KXImage& picture, int time);
    void save();

private:
    void require(int done) const;
    void beginPicture(ColorMapObject* colors, int time);

    std::string _path;
    KXSaveFile _file;
    std::unique_ptr<GifFileType, int (*)(GifFileType*)> _gif;
    int _width, _height;
};
