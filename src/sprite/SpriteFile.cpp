#include "core/ground/ErrorSlot.h"
#include "platform/OpenFile.h"
#include "sprite/KXSprite.h"
#include "util/KXString.h"

#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXIO.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXSaveFile.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace {
// Lists may go on past the end of the file, but no further than this many records of all of them together: a
// count that is wrong could otherwise be one of two thousand millions.
constexpr int mostRecordsPastEnd = 4096;

constexpr std::string_view magic = "KXSPRITE";
constexpr int version = 1;

struct CloseFile {
    void operator()(FILE* file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

// Numbers, names and lists of a file whose counts and lengths may be wrong.
class Reader {
public:
    explicit Reader(FILE* file) : _file(file) {}

    int number() { return static_cast<std::int32_t>(KXGetL(_file)); }
    KXRect rect() { return KXGetRect(_file); }
    std::string text() { return text(number()); }
    std::string text(int length);

    /// Whether a list of this many records goes on to another one.
    bool hasRecord(int read, int count) {
        if (read >= count)
            return false;
        return !(feof(_file) || ferror(_file)) || ++_recordsPastEnd <= mostRecordsPastEnd;
    }

private:
    FILE* _file;
    int _recordsPastEnd = 0;
};
} // namespace

// As much of a text as there is, up to its first zero byte; what comes after that is only read past. Memory
// is taken for what was read, whatever the length claims.
std::string Reader::text(int length) {
    std::string text;
    char block[4096];
    bool ended = false;
    for (int left = length; left > 0; left -= static_cast<int>(sizeof block)) {
        const std::size_t wanted = std::min(static_cast<std::size_t>(left), sizeof block);
        const std::size_t got = fread(block, 1, wanted, _file);
        const std::size_t used = _KXTextIn(block, got).size();
        if (!ended)
            text.append(block, used);
        ended = ended || used < got;
        if (got < wanted)
            break;
    }
    return text;
}

// load() leaves a file open that is no sprite file, but only the latest: a game that searches a folder of
// thousands must not run out of files.
static void keepOpen(File file) {
    static constinit File kept;
    kept = std::move(file);
}

static void putName(const std::string& name, FILE* file) {
    KXPutL(static_cast<long>(name.size()), file);
    fwrite(name.data(), 1, name.size(), file);
}

int KXSprite::save(const char* path) const {
    writeToFile(path);
    return -1;
}

int KXSprite::writeToFile(const char* path) const {
    KXSaveFile saved(path);
    FILE* const file = saved.stream();
    fwrite(magic.data(), 1, magic.size(), file);
    KXPutL(version, file);
    putName(_held().textureName.value_or(""), file);
    KXPutL(numberOfBoundingBoxes(), file);
    for (const auto& [name, box] : _held().boundingBoxes) {
        putName(name, file);
        KXPutRect(box, file);
    }
    KXPutL(numberOfAnimations(), file);
    for (const auto& [name, info] : _held().animations) {
        putName(name, file);
        KXPutL(info.numberOfFrames(), file);
        for (int i = 0; i < info.numberOfFrames(); ++i) {
            int duration = 0;
            KXRect bounds = KXZeroRect;
            info.getInfo(i, &duration, &bounds);
            KXPutL(duration, file);
            KXPutRect(bounds, file);
        }
        KXPutL(info.loops(), file);
    }
    return saved.commit();
}

// Frames of a name that is there already are added to it. An animation is made by its first frame, so one
// without frames is left out.
static void readAnimation(Reader& reader, KXSprite& sprite) {
    const std::string name = reader.text();
    const int frames = reader.number();
    KXSpriteAnimationInfo* info = sprite._getInfoWithName(name.c_str()); // once: a name may be long
    for (int i = 0; reader.hasRecord(i, frames); ++i) {
        const int duration = reader.number();
        const KXRect bounds = reader.rect();
        if (info) {
            info->insertFrameInfo(info->numberOfFrames(), duration, bounds);
        } else {
            sprite.addFrameInfo(name.c_str(), bounds, duration);
            info = sprite._getInfoWithName(name.c_str());
        }
    }
    const int loops = reader.number();
    if (info)
        info->setLoops(loops);
}

// What a file begins with, which is read past.
enum class Beginning { Foreign, TooOld, Sprite };

static Beginning readBeginning(FILE* file) {
    char start[magic.size()];
    if (fread(start, 1, sizeof start, file) != sizeof start ||
        std::memcmp(start, magic.data(), sizeof start) != 0)
        return Beginning::Foreign;
    return Reader(file).number() < 1 ? Beginning::TooOld : Beginning::Sprite; // later ones begin the same
}

static void readFields(FILE* file, KXSprite& sprite) {
    Reader reader(file);
    const int nameLength = reader.number();
    sprite.setTextureName(nameLength < 1 ? nullptr : reader.text(nameLength).c_str());
    const int boxes = reader.number();
    for (int i = 0; reader.hasRecord(i, boxes); ++i) {
        const std::string name = reader.text();
        sprite.addBoundingBox(name.c_str(), reader.rect());
    }
    const int animations = reader.number();
    for (int i = 0; reader.hasRecord(i, animations); ++i)
        readAnimation(reader, sprite);
}

void KXSprite::_take(Contents& read) {
    Contents& own = _own();
    if (!own.hasOwnTexture)
        own.textureName = std::move(read.textureName);
    if (!own.leavesBoxesOut)
        own.boundingBoxes = std::move(read.boundingBoxes);
    own.animations = std::move(read.animations);
    _knownTexture = nullptr;
    _findCurrentInfo();
}

int KXSprite::load(const char* path) {
    const std::unique_ptr<char, FreeText> folder(KXGetContainingPathOf(path));
    setTexturePath(folder.get());
    Contents& own = _own();
    own.path = Contents::copyOf(path);
    own.file = {};
    own.hasOwnTexture = own.leavesBoxesOut = false;
    if (path && _KXFollowsFiles())
        own.file.follow(path); // from before it is read

    File file(path ? _KXOpenFile(path, "r") : nullptr);
    if (!file)
        return KXIsDirectory(path) ? 0 : -1; // only some systems open it
    const Beginning beginning = readBeginning(file.get());
    if (beginning == Beginning::Foreign) {
        keepOpen(std::move(file));
        return 0;
    }
    if (beginning == Beginning::TooOld)
        return -1;
    KXSprite read; // what there is stays if memory runs out
    readFields(file.get(), read);
    _take(read._own());
    return -1;
}

// Whether a sprite can be shown with that sheet as it is now.
static bool hasSheet(const std::optional<std::string>& folder, const std::optional<std::string>& name) {
    return !name || KXImage().load((folder ? *folder + "/" + *name : *name).c_str());
}

void KXSprite::_followFile() {
    if (!_held().path || !_own().file.hasChanged(*_held().path))
        return;
    Contents& own = _own();
    const File file(_KXOpenFile(own.path->c_str(), "r"));
    KXSprite read;
    const bool isSprite = file && readBeginning(file.get()) == Beginning::Sprite;
    if (isSprite)
        readFields(file.get(), read);
    if (!isSprite || feof(file.get()) || ferror(file.get()))
        return _KXReportError("%s: is no whole sprite file", own.path->c_str());
    if (!own.hasOwnTexture && read._own().textureName != own.textureName &&
        !hasSheet(own.texturePath, read._own().textureName))
        return; // the image has said why
    _take(read._own());
    if (!_currentInfo)
        return;
    _currentFrame = std::min(_currentFrame, _currentInfo->numberOfFrames() - 1);
    int duration = 0;
    _currentInfo->getInfo(_currentFrame, &duration, nullptr);
    _frameTimer.setTimeout(duration);
}
