#include "sprite/KXSprite.h"

#include "core/Truncate.h"

#include <Kobaltrix/KXString.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

static char* copyOf(const char* text) { return text ? strdup(text) : nullptr; }

static void replace(char*& text, const char* value) {
    char* const copy = copyOf(value);
    std::free(text);
    text = copy;
}

static const char* printable(const char* text) { return text ? text : "(null)"; }

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
    return strdup(std::next(map.begin(), i)->first.c_str());
}

// A name that is its own new name is written and then erased: the games know it so.
static void rename(auto& map, const char* from, const char* to) {
    const auto found = find(map, from);
    if (found == map.end() || !to)
        return;
    auto& target = map[to];
    if (&target != &found->second)
        target = std::move(found->second);
    map.erase(found);
}

KXSprite::KXSprite()
    : _animations(new Animations), _boundingBoxes(new BoundingBoxes), _currentFrame(0),
      _currentAnimation(nullptr), _frameTimer(0), _texturePath(nullptr), _textureName(nullptr), _alpha(1),
      _scale(1), _rotation(0), _currentInfo(nullptr), _knownTexture(nullptr), _knownTextureWindow(nullptr),
      _knownTextureGeneration(0) {}

KXSprite::~KXSprite() {
    delete _animations;
    delete _boundingBoxes;
    std::free(_texturePath);
    std::free(_textureName);
    std::free(_currentAnimation);
}

char* KXSprite::textureName() const { return copyOf(_textureName); }

void KXSprite::setTextureName(const char* name) {
    replace(_textureName, name);
    _knownTexture = nullptr;
}

void KXSprite::setTexturePath(const char* path) {
    replace(_texturePath, path);
    _knownTexture = nullptr;
}

void KXSprite::setAlpha(float alpha) { _alpha = alpha; }

float KXSprite::alpha() const { return _alpha; }

void KXSprite::setScale(float scale) { _scale = scale; }

float KXSprite::scale() const { return _scale; }

void KXSprite::setRotation(int rotation) { _rotation = rotation; }

int KXSprite::rotation() const { return _rotation; }

KXSpriteAnimationInfo* KXSprite::_getInfoWithName(const char* name) const {
    const auto found = find(_animations->byName, name);
    return found == _animations->byName.end() ? nullptr : found->second.get();
}

// Belongs after everything that adds, moves or removes an animation.
void KXSprite::_findCurrentInfo() { _currentInfo = _getInfoWithName(_currentAnimation); }

KXSpriteAnimationInfo& KXSprite::_infoFor(const char* name) {
    if (KXSpriteAnimationInfo* info = _getInfoWithName(name))
        return *info;
    auto created = std::make_unique<KXSpriteAnimationInfo>();
    KXSpriteAnimationInfo& info = *created;
    _animations->byName.emplace(name, std::move(created));
    _findCurrentInfo();
    return info;
}

bool KXSprite::_validateFrameIndex(int i, const char* name) const {
    const KXSpriteAnimationInfo* info = _getInfoWithName(name);
    return info && info->_validateFrameIndex(i);
}

void KXSprite::_clearAnimations() {
    _animations->byName.clear();
    _findCurrentInfo();
}

void KXSprite::_clearBoundingBoxes() { _boundingBoxes->byName.clear(); }

void KXSprite::addAnimation(const char* name) {
    if (!_getInfoWithName(name))
        addFrameInfo(name, KXZeroRect, 0);
}

void KXSprite::addFrameInfo(const char* name, KXRect bounds, int duration) {
    if (!name)
        return;
    KXSpriteAnimationInfo& info = _infoFor(name);
    info.insertFrameInfo(info.numberOfFrames(), duration, bounds);
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

int KXSprite::numberOfAnimations() const { return static_cast<int>(_animations->byName.size()); }

char* KXSprite::animationAtIndex(int i) const { return nameAtIndex(_animations->byName, i); }

void KXSprite::renameAnimation(const char* from, const char* to) {
    rename(_animations->byName, from, to);
    _findCurrentInfo();
}

void KXSprite::removeAnimation(const char* name) {
    erase(_animations->byName, name);
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
        _boundingBoxes->byName.insert_or_assign(name, box);
}

void KXSprite::setBoundingBox(const char* name, KXRect box) { addBoundingBox(name, box); }

KXRect KXSprite::boundingBoxNamed(const char* name) const {
    const auto found = find(_boundingBoxes->byName, name);
    return found == _boundingBoxes->byName.end() ? KXZeroRect : found->second;
}

int KXSprite::numberOfBoundingBoxes() const { return static_cast<int>(_boundingBoxes->byName.size()); }

char* KXSprite::boundingBoxAtIndex(int i) const { return nameAtIndex(_boundingBoxes->byName, i); }

void KXSprite::renameBoundingBox(const char* from, const char* to) {
    rename(_boundingBoxes->byName, from, to);
}

void KXSprite::removeBoundingBox(const char* name) { erase(_boundingBoxes->byName, name); }

KXSprite* KXSprite::clone() const {
    auto copy = std::make_unique<KXSprite>();
    copy->setTextureName(_textureName);
    copy->setTexturePath(_texturePath);
    copy->setAlpha(_alpha);
    copy->setScale(_scale);
    copy->setRotation(_rotation);
    for (const auto& [name, info] : _animations->byName) {
        copy->addAnimation(name.c_str());
        KXSpriteAnimationInfo& copied = copy->_infoFor(name.c_str());
        if (info->numberOfFrames() > 0)
            copied = *info;
        else
            copied.setLoops(info->loops()); // an animation of a sprite always has a frame
    }
    return copy.release();
}

void KXSprite::print() const {
    std::printf("Animation: %p\n", static_cast<const void*>(this));
    std::printf("Texture name: %s\n", printable(_textureName));
    std::printf("Number of animations: %lu\n", static_cast<unsigned long>(_animations->byName.size()));
    for (const auto& [name, info] : _animations->byName) {
        std::printf(" - Animation: %s\n", name.c_str());
        std::printf("      Frames: %d\n", info->numberOfFrames());
        for (int k = 0; k < info->numberOfFrames(); ++k) {
            int duration = 0;
            KXRect bounds = KXZeroRect;
            info->getInfo(k, &duration, &bounds);
            std::printf("        Frame: %d\n", k);
            std::printf("         Duration: %d\n", duration);
            std::printf("           Bounds: (%d, %d), (%d, %d)\n", _KXTruncate(bounds.origin.x),
                        _KXTruncate(bounds.origin.y), _KXTruncate(bounds.size.width),
                        _KXTruncate(bounds.size.height));
        }
    }
    std::printf("Number of bounding boxes: %lu\n", static_cast<unsigned long>(_boundingBoxes->byName.size()));
    for (const auto& [name, box] : _boundingBoxes->byName) {
        std::printf(" - Bounding box: %s\n", name.c_str());
        std::printf("               : %s\n", printable(KXRectToString(box)));
    }
}
