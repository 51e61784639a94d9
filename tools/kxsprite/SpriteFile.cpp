#include "SpriteFile.h"

#include <bit>
#include <cmath>

namespace {
constexpr std::string_view magic = "KXSPRITE";
constexpr std::size_t smallestBox = 20, smallestAnimation = 12, frameSize = 20;

class StrictReader {
public:
    StrictReader(std::string_view bytes, const FindSheet& findSheet) : _bytes(bytes), _findSheet(findSheet) {}

    StrictReading read() {
        try {
            readHead();
            readBoxes();
            readAnimations();
            _reading.readable = true;
            if (left())
                note(_at, std::to_string(left()) + " bytes follow the end of the sprite");
        } catch (const FaultAt& fault) {
            _reading.faults.push_back(fault);
        }
        return std::move(_reading);
    }

private:
    std::size_t left() const { return _bytes.size() - _at; }
    void note(std::size_t offset, const std::string& what) { _reading.faults.push_back({offset, what}); }

    std::uint32_t word(const std::string& what) {
        if (left() < 4)
            throw FaultAt{_at, "the file is cut short in " + what};
        std::uint32_t value = 0;
        for (unsigned i = 0; i < 4; ++i)
            value |= std::uint32_t{static_cast<unsigned char>(_bytes[_at + i])} << 8 * i;
        _at += 4;
        return value;
    }

    std::int32_t integer(const std::string& what) { return std::bit_cast<std::int32_t>(word(what)); }

    std::int32_t count(const std::string& what, std::size_t smallest) {
        const std::size_t offset = _at;
        const std::int32_t value = integer("the number of " + what);
        if (value < 0 || static_cast<std::size_t>(value) > left() / smallest)
            throw FaultAt{offset, "the number of " + what + " is " + std::to_string(value) +
                                      ", which the remaining " + std::to_string(left()) +
                                      " bytes cannot hold"};
        return value;
    }

    std::string name(const std::string& what) {
        const std::size_t offset = _at;
        const std::int32_t length = integer("the length of " + what);
        if (length < 0 || static_cast<std::size_t>(length) > left())
            throw FaultAt{offset, "the length of " + what + " is " + std::to_string(length) +
                                      ", which the remaining " + std::to_string(left()) +
                                      " bytes cannot hold"};
        std::string text(_bytes.substr(_at, static_cast<std::size_t>(length)));
        _at += text.size();
        if (text.find('\0') != std::string::npos)
            note(offset + 4, what + " " + quoted(text) + " holds a zero byte and will be cut there");
        return text;
    }

    Area area(const std::string& what) {
        const std::size_t offset = _at;
        Area area;
        area.x = std::bit_cast<float>(word(what));
        area.y = std::bit_cast<float>(word(what));
        area.width = integer(what);
        area.height = integer(what);
        if (!std::isfinite(area.x) || !std::isfinite(area.y))
            note(offset, what + " has a position that is not a finite number");
        return area;
    }

    void readHead() {
        if (!_bytes.starts_with(magic))
            throw FaultAt{0, magic.starts_with(_bytes) ? "the file is cut short in the word KXSPRITE"
                                                       : "the file does not begin with KXSPRITE"};
        _at = magic.size();
        if (const std::int32_t version = integer("the version"); version < 1)
            throw FaultAt{magic.size(), "the version is " + std::to_string(version) + ", less than 1"};
        const std::size_t offset = _at;
        _reading.document.texture = name("the texture's name");
        if (_reading.document.texture.empty())
            return;
        try {
            _sheet = _findSheet(_reading.document.texture);
        } catch (const Fault& fault) {
            note(offset + 4, fault.what());
        }
    }

    void readBoxes() {
        for (std::int32_t i = count("boxes", smallestBox); i > 0; --i) {
            const std::size_t offset = _at;
            const std::string title = name("a box's name");
            if (!_reading.document.boxes.emplace(title, area("box " + quoted(title))).second)
                note(offset, "there is already a box " + quoted(title));
        }
    }

    void readAnimations() {
        for (std::int32_t i = count("animations", smallestAnimation); i > 0; --i) {
            const std::size_t offset = _at;
            const std::string title = name("an animation's name"), what = "animation " + quoted(title);
            Animation animation;
            const std::int32_t frames = count("frames of " + what, frameSize);
            if (!frames)
                note(_at - 4, what + " has no frames and will be left out");
            animation.frames.reserve(static_cast<std::size_t>(frames));
            for (std::int32_t k = 0; k < frames; ++k)
                animation.frames.push_back(frame(what + ", frame " + std::to_string(k)));
            animation.loops = integer("the loops flag of " + what);
            if (!_reading.document.animations.emplace(title, std::move(animation)).second)
                note(offset, "there is already an " + what);
        }
    }

    Frame frame(const std::string& what) {
        const std::size_t offset = _at;
        const std::int32_t duration = integer(what);
        const Frame frame = {duration, area(what)};
        for (const std::string& fault : faultsOf(frame, _sheet))
            note(offset, what + " " + fault);
        return frame;
    }

    std::string_view _bytes;
    const FindSheet& _findSheet;
    std::size_t _at = 0;
    std::optional<SheetSize> _sheet;
    StrictReading _reading;
};
} // namespace

StrictReading readStrictly(std::string_view bytes, const FindSheet& findSheet) {
    return StrictReader(bytes, findSheet).read();
}
