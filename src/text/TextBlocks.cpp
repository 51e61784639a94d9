#include "text/TextBlocks.h"

#include "util/Utf8.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

// Bytes of a block: of a full one, and of each that a long text is cut into, which can then grow.
static constexpr std::size_t fullBlock = 4096, newBlock = 2048;

void _KXTextBlocks::Sums::add(const Sums& other) {
    bytes += other.bytes;
    characters += other.characters;
    breaks += other.breaks;
}

void _KXTextBlocks::Sums::subtract(const Sums& other) {
    bytes -= other.bytes;
    characters -= other.characters;
    breaks -= other.breaks;
}

_KXTextBlocks::Sums _KXTextBlocks::sumsOf(std::string_view text) {
    return {text.size(), _KXCountCharacters(text),
            static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'))};
}

std::vector<_KXTextBlocks::Block> _KXTextBlocks::blocksOf(std::string_view text) {
    std::vector<Block> blocks;
    blocks.reserve(text.size() / (newBlock - 3) + 1);
    while (!text.empty()) {
        const std::size_t bytes = text.size() <= fullBlock ? text.size() : _KXCharacterStart(text, newBlock);
        const std::string_view first = text.substr(0, bytes);
        blocks.push_back({std::string(first), sumsOf(first)});
        text.remove_prefix(bytes);
    }
    return blocks;
}

// Sums up what is not known yet. There is such a block.
const _KXTextBlocks::Sums& _KXTextBlocks::sumsBefore(std::size_t block) const {
    for (; _known <= block; ++_known) {
        Sums sums = _known > 0 ? _before[_known - 1] : Sums();
        if (_known > 0)
            sums.add(_blocks[_known - 1].sums);
        _before[_known] = sums;
    }
    return _before[block];
}

// The last block before which there is no more of something than said. There is a block.
std::size_t _KXTextBlocks::find(std::size_t Sums::*what, std::size_t most) const {
    sumsBefore(0);
    while (_known < _blocks.size() && _before[_known - 1].*what <= most)
        sumsBefore(_known);
    const auto end = _before.begin() + static_cast<std::ptrdiff_t>(_known);
    const auto behind = std::upper_bound(_before.begin(), end, most,
                                         [what](std::size_t m, const Sums& sums) { return m < sums.*what; });
    return static_cast<std::size_t>(behind - _before.begin()) - 1;
}

_KXTextBlocks::Place _KXTextBlocks::placeOf(std::size_t position) const {
    const std::size_t block = find(&Sums::bytes, position);
    return {block, position - _before[block].bytes};
}

// Nearly every change lies within a block. False for one that does not.
bool _KXTextBlocks::changeWithin(Place begin, std::size_t end, std::string_view text) {
    Block& block = _blocks[begin.block];
    if (end > block.text.size())
        return false;
    const std::size_t bytes = block.text.size() - (end - begin.offset) + text.size();
    if (bytes == 0 || bytes > fullBlock)
        return false;
    const Sums removed = sumsOf(std::string_view(block.text).substr(begin.offset, end - begin.offset)),
               added = sumsOf(text);
    block.text.replace(begin.offset, end - begin.offset, text); // the one that may lack memory
    for (Sums* sums : {&block.sums, &_total}) {
        sums->add(added);
        sums->subtract(removed);
    }
    _known = std::min(_known, begin.block + 1);
    return true;
}

void _KXTextBlocks::exchange(std::size_t begin, std::size_t end, std::string_view text) {
    if (begin == end && text.empty())
        return;
    std::size_t first = 0, behind = 0; // of the blocks that are replaced
    std::string whole;
    if (!_blocks.empty()) {
        const Place from = placeOf(begin);
        if (changeWithin(from, from.offset + (end - begin), text))
            return;
        // The end is looked for at its last byte: there it is in a block that must be touched.
        const Place last = end > begin ? placeOf(end - 1) : Place{from.block, from.offset - 1};
        first = from.block;
        behind = last.block + 1;
        const std::string_view left = _blocks[first].text, right = _blocks[last.block].text;
        whole.reserve(fullBlock + text.size());
        whole.append(left.substr(0, from.offset)).append(text).append(right.substr(last.offset + 1));
        text = whole;
    }
    std::vector<Block> made = blocksOf(text);
    const std::size_t count = _blocks.size() - (behind - first) + made.size();
    if (count > _blocks.capacity())
        _blocks.reserve(count + count / 2);
    if (count > _before.size())
        _before.resize(count + count / 2); // the last that may lack memory
    for (std::size_t i = first; i < behind; ++i)
        _total.subtract(_blocks[i].sums);
    for (const Block& block : made)
        _total.add(block.sums);
    const auto at = _blocks.begin() + static_cast<std::ptrdiff_t>(first);
    const std::size_t replaced = std::min(behind - first, made.size());
    std::move(made.begin(), made.begin() + static_cast<std::ptrdiff_t>(replaced), at);
    const auto rest = at + static_cast<std::ptrdiff_t>(replaced);
    if (replaced < made.size())
        _blocks.insert(rest, std::make_move_iterator(made.begin() + static_cast<std::ptrdiff_t>(replaced)),
                       std::make_move_iterator(made.end()));
    else
        _blocks.erase(rest, _blocks.begin() + static_cast<std::ptrdiff_t>(behind));
    _known = std::min(_known, first + 1);
    _known = std::min(_known, _blocks.size());
}

std::string _KXTextBlocks::part(std::size_t begin, std::size_t end) const {
    std::string part;
    part.reserve(end - begin);
    copyTo(part, begin, end);
    return part;
}

void _KXTextBlocks::copyTo(std::string& to, std::size_t begin, std::size_t end) const {
    if (begin >= end)
        return;
    for (auto [block, offset] = placeOf(begin); begin < end; ++block, offset = 0) {
        const std::string_view piece = std::string_view(_blocks[block].text).substr(offset, end - begin);
        to += piece;
        begin += piece.size();
    }
}

std::string_view _KXTextBlocks::character(std::size_t position) const {
    if (position >= _total.bytes)
        return {};
    const Place place = placeOf(position);
    return _KXCharacterAt(_blocks[place.block].text, place.offset);
}

std::size_t _KXTextBlocks::before(std::size_t position) const {
    return position == 0 ? 0 : characterStart(std::min(position, _total.bytes) - 1);
}

std::size_t _KXTextBlocks::after(std::size_t position) const {
    return std::min(position, _total.bytes) + character(position).size();
}

std::size_t _KXTextBlocks::characterStart(std::size_t byte) const {
    if (byte >= _total.bytes)
        return _total.bytes;
    const Place place = placeOf(byte);
    return byte - place.offset + _KXCharacterStart(_blocks[place.block].text, place.offset);
}

std::size_t _KXTextBlocks::charactersBefore(std::size_t position) const {
    if (position >= _total.bytes)
        return _total.characters;
    const Place place = placeOf(position);
    const std::string_view text = _blocks[place.block].text;
    return _before[place.block].characters + _KXCountCharacters(text.substr(0, place.offset));
}

std::size_t _KXTextBlocks::positionOfCharacter(std::size_t number) const {
    if (number >= _total.characters)
        return _total.bytes;
    const std::size_t block = find(&Sums::characters, number);
    const std::string_view text = _blocks[block].text;
    std::size_t offset = 0;
    for (std::size_t left = number - _before[block].characters; left > 0; --left)
        offset = _KXNextCharacter(text, offset);
    return _before[block].bytes + offset;
}

std::size_t _KXTextBlocks::lineOf(std::size_t position) const {
    if (position >= _total.bytes)
        return _total.breaks;
    const Place place = placeOf(position);
    const std::string_view text = _blocks[place.block].text;
    return _before[place.block].breaks + sumsOf(text.substr(0, place.offset)).breaks;
}

std::size_t _KXTextBlocks::lineStart(std::size_t line) const {
    if (line == 0)
        return 0;
    if (line > _total.breaks)
        return _total.bytes;
    const std::size_t block = find(&Sums::breaks, line - 1);
    const std::string& text = _blocks[block].text;
    std::size_t offset = 0;
    for (std::size_t left = line - _before[block].breaks; left > 0; --left)
        offset = text.find('\n', offset) + 1;
    return _before[block].bytes + offset;
}

std::size_t _KXTextBlocks::lineEnd(std::size_t line) const {
    return line >= _total.breaks ? _total.bytes : lineStart(line + 1) - 1;
}
