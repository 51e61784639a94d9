#include "sprite/KXSprite.h"

#include "core/ground/Truncate.h"
#include "util/KXString.h"

#include <cstdio>
#include <iterator>
#include <string_view>
#include <utility>

// The entry of a name, the end of the map for an unknown or null one.
static auto find(auto& map, const char* name) { return name ? map.find(std::string_view(name)) : map.end(); }

static void erase(auto& map, const char* name) {
    const auto found = find(map, name);
    if (found != map.end())
        map.erase(found);
}

static char* nameAtIndex(const auto& map, int i) {
    if (i < 0 || static_cast<std::size_t>(i) >= map.size())
        return nullptr;
    return _KXCopyForCaller(std::next(map.begin(), i)->first.c_str());
}

// The entry is written under its new name and then erased under the old one. Where both are the same name,
// nothing is left; the interface promises that.
static void rename(auto& map, const char* from, const char* to) {
    const auto found = find(map, from);
    if (found == map.end() || !to)
        return;
    auto& target = map[to];
    if (&target != &found->second)
        target = std::move(found->second);
    map.erase(found);
}

// Without contents a sprite is an empty one: so it can be moved from where there is no memory.
KXSprite::KXSprite()
    : _currentFrame(0), _frameTimer(0), _alpha(1), _scale(1), _rotation(0), _currentInfo(nullptr),
      _knownTexture(nullptr), _knownTextureWindow(nullptr), _knownTextureGeneration(0) {}

KXSprite::KXSprite(const KXSprite& other) : KXSprite() { *this = other; }

KXSprite::KXSprite(KXSprite&& other) noexcept : KXSprite() { *this = std::move(other); }

KXSprite& KXSprite::operator=(const KXSprite& other) {
    auto contents = std::make_unique<Contents>(other._held());
    _contents = std::move(contents);
    _takeState(other);
    return *this;
}

KXSprite& KXSprite::operator=(KXSprite&& other) noexcept {
    if (this == &other)
        return *this;
    _contents = std::move(other._contents);
    _takeState(other);
    other._takeState(KXSprite());
    return *this;
}

KXSprite::Contents& KXSprite::_own() {
    if (!_contents)
        _contents = std::make_unique<Contents>();
    return *_contents;
}

const KXSprite::Contents& KXSprite::_held() const {
    static const Contents none;
    return _contents ? *_contents : none;
}

// All but the contents, which are there already.
void KXSprite::_takeState(const KXSprite& other) {
    _currentFrame = other._currentFrame;
    _frameTimer = other._frameTimer;
    _alpha = other._alpha;
    _scale = other._scale;
    _rotation = other._rotation;
    _knownTexture = nullptr;
    _findCurrentInfo();
}

KXSprite::~KXSprite() = default;

char* KXSprite::textureName() const {
    return _held().textureName ? _KXCopyForCaller(_held().textureName->c_str()) : nullptr;
}

void KXSprite::setTextureName(const char* name) {
    _own().textureName = Contents::copyOf(name);
    _own().hasOwnTexture = true;
    _knownTexture = nullptr;
}

void KXSprite::setTexturePath(const char* path) {
    _own().texturePath = Contents::copyOf(path);
    _knownTexture = nullptr;
}

void KXSprite::setAlpha(float alpha) { _alpha = alpha; }

float KXSprite::alpha() const { return _alpha; }

void KXSprite::setScale(float scale) { _scale = scale; }

float KXSprite::scale() const { return _scale; }

void KXSprite::setRotation(int rotation) { _rotation = rotation; }

int KXSprite::rotation() const { return _rotation; }

KXSpriteAnimationInfo* KXSprite::_getInfoWithName(const char* name) const {
    if (!_contents)
        return nullptr;
    const auto found = find(_contents->animations, name);
    return found == _contents->animations.end() ? nullptr : &found->second;
}

// Belongs after everything that adds, moves or removes an animation.
void KXSprite::_findCurrentInfo() {
    _currentInfo = _getInfoWithName(Contents::pointerTo(_held().currentAnimation));
}

bool KXSprite::_validateFrameIndex(int i, const char* name) const {
    const KXSpriteAnimationInfo* info = _getInfoWithName(name);
    return info && info->_validateFrameIndex(i);
}

void KXSprite::_clearAnimations() {
    _own().animations.clear();
    _findCurrentInfo();
}

void KXSprite::_clearBoundingBoxes() { _own().boundingBoxes.clear(); }

void KXSprite::addAnimation(const char* name) {
    if (!_getInfoWithName(name))
        addFrameInfo(name, KXZeroRect, 0);
}

void KXSprite::addFrameInfo(const char* name, KXRect bounds, int duration) {
    if (!name)
        return;
    if (KXSpriteAnimationInfo* info = _getInfoWithName(name)) {
        info->insertFrameInfo(info->numberOfFrames(), duration, bounds);
        return;
    }
    KXSpriteAnimationInfo created; // there is none without a frame
    created.insertFrameInfo(0, duration, bounds);
    _own().animations.emplace(name, std::move(created));
    _findCurrentInfo();
}

void KXSprite::insertFrameInfo(int i, const char* name, KXRect bounds, int duration) {
    if (KXSpriteAnimationInfo* info = _getInfoWithName(name))
        info->insertFrameInfo(i, duration, bounds);
}

void KXSprite::setFrameInfo(int i, const char* name, KXRect bounds, int duration) {
    if (KXSpriteAnimationInfo* info = _getInfoWithName(name))
        info->setInfo(i, duration, bounds);
}

void KXSprite::getFrameInfo(int i, const char* name, KXRect* bounds, int* duration) const {
    if (const KXSpriteAnimationInfo* info = _getInfoWithName(name))
        info->getInfo(i, duration, bounds);
}

void KXSprite::removeFrameInfo(int i, const char* name) {
    if (!_validateFrameIndex(i, name))
        return;
    KXSpriteAnimationInfo* info = _getInfoWithName(name);
    info->removeInfo(i);
    if (info->numberOfFrames() == 0)
        removeAnimation(name);
}

void KXSprite::setAnimationLoops(const char* name, int loops) {
    if (KXSpriteAnimationInfo* info = _getInfoWithName(name))
        info->setLoops(loops);
}

int KXSprite::animationLoops(const char* name) const {
    const KXSpriteAnimationInfo* info = _getInfoWithName(name);
    return info ? info->loops() : 0;
}

int KXSprite::numberOfAnimations() const { return static_cast<int>(_held().animations.size()); }

char* KXSprite::animationAtIndex(int i) const { return nameAtIndex(_held().animations, i); }

void KXSprite::renameAnimation(const char* from, const char* to) {
    rename(_own().animations, from, to);
    _findCurrentInfo();
}

void KXSprite::removeAnimation(const char* name) {
    erase(_own().animations, name);
    _findCurrentInfo();
}

int KXSprite::numberOfFrames() const { return _currentInfo ? _currentInfo->numberOfFrames() : -1; }

int KXSprite::numberOfFrames(const char* name) const {
    const KXSpriteAnimationInfo* info = _getInfoWithName(name);
    return info ? info->numberOfFrames() : -1;
}

KXSize KXSprite::fullSize() const { return _currentInfo ? _currentInfo->_fullSize() : KXZeroSize; }

KXSize KXSprite::fullSize(const char* name) const {
    const KXSpriteAnimationInfo* info = _getInfoWithName(name);
    return info ? info->_fullSize() : KXZeroSize;
}

void KXSprite::addBoundingBox(const char* name, KXRect box) {
    if (name)
        _own().boundingBoxes.insert_or_assign(name, box);
}

void KXSprite::setBoundingBox(const char* name, KXRect box) { addBoundingBox(name, box); }

bool KXSprite::_hasBox(const char* name) const {
    return find(_held().boundingBoxes, name) != _held().boundingBoxes.end();
}

KXRect KXSprite::boundingBoxNamed(const char* name) const {
    const auto found = find(_held().boundingBoxes, name);
    return found == _held().boundingBoxes.end() ? KXZeroRect : found->second;
}

int KXSprite::numberOfBoundingBoxes() const { return static_cast<int>(_held().boundingBoxes.size()); }

char* KXSprite::boundingBoxAtIndex(int i) const { return nameAtIndex(_held().boundingBoxes, i); }

void KXSprite::renameBoundingBox(const char* from, const char* to) { rename(_own().boundingBoxes, from, to); }

void KXSprite::removeBoundingBox(const char* name) { erase(_own().boundingBoxes, name); }

KXSprite* KXSprite::clone() const {
    auto copy = std::make_unique<KXSprite>();
    Contents& own = copy->_own();
    own.textureName = _held().textureName;
    own.texturePath = _held().texturePath;
    own.path = _held().path;
    own.file = _held().file;
    own.hasOwnTexture = _held().hasOwnTexture;
    own.leavesBoxesOut = true;
    copy->setAlpha(_alpha);
    copy->setScale(_scale);
    copy->setRotation(_rotation);
    for (const auto& [name, info] : _held().animations) {
        copy->addAnimation(name.c_str());
        KXSpriteAnimationInfo& copied = *copy->_getInfoWithName(name.c_str());
        if (info.numberOfFrames() > 0)
            copied = info;
        else
            copied.setLoops(info.loops()); // an animation of a sprite always has a frame
    }
    return copy.release();
}

void KXSprite::print() const {
    std::printf("Animation: %p\n", static_cast<const void*>(this));
    std::printf("Texture name: %s\n", Contents::printable(Contents::pointerTo(_held().textureName)));
    std::printf("Number of animations: %lu\n", static_cast<unsigned long>(_held().animations.size()));
    for (const auto& [name, info] : _held().animations) {
        std::printf(" - Animation: %s\n", name.c_str());
        std::printf("      Frames: %d\n", info.numberOfFrames());
        for (int k = 0; k < info.numberOfFrames(); ++k) {
            int duration = 0;
            KXRect bounds = KXZeroRect;
            info.getInfo(k, &duration, &bounds);
            std::printf("        Frame: %d\n", k);
            std::printf("         Duration: %d\n", duration);
            std::printf("           Bounds: (%d, %d), (%d, %d)\n", _KXTruncate(bounds.origin.x),
                        _KXTruncate(bounds.origin.y), _KXTruncate(bounds.size.width),
                        _KXTruncate(bounds.size.height));
        }
    }
    std::printf("Number of bounding boxes: %lu\n", static_cast<unsigned long>(_held().boundingBoxes.size()));
    for (const auto& [name, box] : _held().boundingBoxes) {
        std::printf(" - Bounding box: %s\n", name.c_str());
        std::printf("               : %s\n", Contents::printable(KXRectToString(box)));
    }
}
