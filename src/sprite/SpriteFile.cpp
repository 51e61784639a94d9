#include "sprite/KXSprite.h"

#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXIO.h>

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {
// The one bound on what a file may claim: a list goes on past the end of the file, but this many records of
// all its lists together and no more.
constexpr int mostRecordsPastEnd = 4096;

constexpr std::string_view magic = "KXSPRITE";
constexpr int version = 1;

struct CloseFile {
    void operator()(FILE* file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

// Numbers, names and lists of a file that need not tell the truth.
class Reader {
public:
    explicit Reader(FILE* file) : _file(file) {
        struct stat status;
        if (fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode))
            _size = status.st_size;
    }

    int number() { return static_cast<std::int32_t>(KXGetL(_file)); }
    KXRect rect() { return KXGetRect(_file); }
    std::string name() { return text(number()); }
    std::string text(int length);

    /// Whether a list of this many records goes on to another one.
    bool hasRecord(int read, int count) {
        if (read >= count)
            return false;
        return !(feof(_file) || ferror(_file)) || ++_recordsPastEnd <= mostRecordsPastEnd;
    }

private:
    FILE* _file;
    off_t _size = 0; // 0 when it cannot be told beforehand
    int _recordsPastEnd = 0;
};
} // namespace

// As much of a text as there is, up to its first zero byte; what comes after that is only read past.
std::string Reader::text(int length) {
    std::string text;
    if (length < 1)
        return text;
    auto left = static_cast<std::size_t>(length);
    const off_t available = std::max<off_t>(_size - ftello(_file), 0);
    text.reserve(std::min(left, static_cast<std::size_t>(available)));
    char block[4096];
    for (bool ended = false; left > 0;) {
        const std::size_t wanted = std::min(left, sizeof block);
        const std::size_t got = fread(block, 1, wanted, _file);
        const std::size_t used = strnlen(block, got);
        if (!ended)
            text.append(block, used);
        ended = ended || used < got;
        left -= got;
        if (got < wanted)
            break;
    }
    return text;
}

// A file that is none of ours stays open, but only the latest: a game that searches a folder of thousands
// shall not run out of files.
static void keepOpen(File file) {
    static constinit FILE* kept = nullptr;
    if (kept)
        fclose(kept);
    kept = file.release();
}

static void putName(const std::string& name, FILE* file) {
    KXPutL(static_cast<long>(name.size()), file);
    fwrite(name.data(), 1, name.size(), file);
}

int KXSprite::save(const char* path) const {
    const File owned(path ? fopen(path, "w") : nullptr);
    FILE* const file = owned.get();
    if (!file)
        return -1;
    fwrite(magic.data(), 1, magic.size(), file);
    KXPutL(version, file);
    putName(_textureName ? _textureName : "", file);
    KXPutL(numberOfBoundingBoxes(), file);
    for (const auto& [name, box] : _boundingBoxes->byName) {
        putName(name, file);
        KXPutRect(box, file);
    }
    KXPutL(numberOfAnimations(), file);
    for (const auto& [name, info] : _animations->byName) {
        putName(name, file);
        KXPutL(info->numberOfFrames(), file);
        for (int i = 0; i < info->numberOfFrames(); ++i) {
            int duration = 0;
            KXRect bounds = KXZeroRect;
            info->getInfo(i, &duration, &bounds);
            KXPutL(duration, file);
            KXPutRect(bounds, file);
        }
        KXPutL(info->loops(), file);
    }
    return -1;
}

int KXSprite::load(const char* path) {
    char* const folder = KXGetContainingPathOf(path);
    setTexturePath(folder);
    std::free(folder);

    File file(path ? fopen(path, "r") : nullptr);
    if (!file)
        return -1;
    char start[magic.size()];
    if (fread(start, 1, sizeof start, file.get()) != sizeof start ||
        std::memcmp(start, magic.data(), sizeof start) != 0) {
        keepOpen(std::move(file));
        return 0;
    }
    Reader reader(file.get());
    if (reader.number() < 1) // the version; later ones begin with the same fields
        return -1;

    const int nameLength = reader.number();
    setTextureName(nameLength < 1 ? nullptr : reader.text(nameLength).c_str());
    _clearBoundingBoxes();
    const int boxes = reader.number();
    for (int i = 0; reader.hasRecord(i, boxes); ++i) {
        const std::string name = reader.name();
        addBoundingBox(name.c_str(), reader.rect());
    }
    _clearAnimations();
    const int animations = reader.number();
    for (int i = 0; reader.hasRecord(i, animations); ++i) {
        const std::string name = reader.name();
        const int frames = reader.number();
        KXSpriteAnimationInfo* info =
            nullptr; // the first frame makes it; looked up once, as a name may be long
        for (int k = 0; reader.hasRecord(k, frames); ++k) {
            const int duration = reader.number();
            const KXRect bounds = reader.rect();
            info = info ? info : &_infoFor(name.c_str());
            info->insertFrameInfo(info->numberOfFrames(), duration, bounds);
        }
        const int loops = reader.number();
        if (info || (info = _getInfoWithName(name.c_str())))
            info->setLoops(loops);
    }
    return -1;
}
