#include "Parts.h"

#include <sys/stat.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {
constexpr int framesEach = 10;

/// A sprite file in the temporary folder.
class SpriteFile {
public:
    explicit SpriteFile(int frames)
        : _path(KXTempString("/tmp/kobaltrix-bench-%d-%d.spr", static_cast<int>(getpid()), frames)) {
        for (int i = 0; i < frames; ++i)
            _sprite.addFrameInfo(KXTempString("animation %06d", i / framesEach),
                                 {{static_cast<float>(i), 0}, {16, 16}}, i);
        save();
    }
    ~SpriteFile() { KXRemoveFile(_path.c_str()); }
    SpriteFile(const SpriteFile&) = delete;
    SpriteFile& operator=(const SpriteFile&) = delete;

    void save() const { _sprite.save(_path.c_str()); }
    void load() const {
        KXSprite sprite;
        sprite.load(_path.c_str());
    }
    /// Reads the same bytes at once and allocates what a sprite of so many frames holds: an animation and its
    /// name for each ten.
    void readPlainly(int frames) const {
        FILE* const file = std::fopen(_path.c_str(), "r");
        struct stat status = {};
        fstat(fileno(file), &status);
        std::vector<char> bytes(static_cast<std::size_t>(status.st_size));
        const std::size_t read = std::fread(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
        std::vector<std::unique_ptr<std::vector<KXSpriteFrameInfo>>> animations;
        std::vector<std::string> names;
        for (int i = 0; i < frames && read; i += framesEach) {
            animations.push_back(std::make_unique<std::vector<KXSpriteFrameInfo>>(framesEach));
            names.emplace_back("animation 000000 ");
        }
    }

private:
    std::string _path;
    KXSprite _sprite;
};
} // namespace

void benchFiles(Table& table) {
    constexpr int few = 10'000, many = 100'000;
    const SpriteFile small(few), large(many);
    table.compare(
        "loading a sprite of 100,000 frames", "one fread, the same allocations", 0, many,
        [&] { large.load(); }, [&] { large.readPlainly(many); });
    table.compare(
        "loading a sprite of 100,000 frames", "loading one of 10,000", 15, many, [&] { large.load(); },
        [&] { small.load(); });
    table.compare(
        "saving a sprite of 100,000 frames", "saving one of 10,000", 15, many, [&] { large.save(); },
        [&] { small.save(); });

    constexpr int values = 1'000'000;
    FILE* const file = std::tmpfile();
    table.report("KXPutL", values, [file] {
        std::rewind(file);
        for (long i = 0; i < values; ++i)
            KXPutL(i, file);
    });
    table.report("KXGetL", values, [file] {
        std::rewind(file);
        for (long i = 0; i < values; ++i)
            KXGetL(file);
    });
    table.report("KXPutRect", values, [file] {
        std::rewind(file);
        for (long i = 0; i < values; ++i)
            KXPutRect({{1, 2}, {3, 4}}, file);
    });
    std::fclose(file);
}
