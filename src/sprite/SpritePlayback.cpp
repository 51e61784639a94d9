#include "core/ground/Truncate.h"
#include "render/KXRenderContext.h"
#include "render/KXTexture.h"
#include "render/KXTextureCache.h"
#include "sprite/KXSprite.h"

#include <Kobaltrix/KXRandom.h>
#include <Kobaltrix/KXString.h>

#include <limits>

void KXSprite::setAnimation(const char* name) {
    _contents->currentAnimation = Contents::copyOf(name);
    _findCurrentInfo();
    if (!name)
        return;
    _currentFrame = 0;
    int duration = 0;
    if (_currentInfo)
        _currentInfo->getInfo(0, &duration, nullptr);
    _frameTimer.setTimeout(duration);
    _frameTimer.reset();
}

const char* KXSprite::currentAnimation() const {
    return KXTempString("%s", Contents::printable(Contents::pointerTo(_contents->currentAnimation)));
}

int KXSprite::currentFrameIndex() const { return _currentFrame; }

void KXSprite::poll() {
    if (!_contents->currentAnimation || animationFinished() || !_frameTimer.tick())
        return;
    if (_currentFrame < std::numeric_limits<int>::max())
        ++_currentFrame;
    if (!_currentInfo)
        return;
    // Only a looping animation gets past its last frame; any other has finished on it.
    if (_currentFrame >= _currentInfo->numberOfFrames())
        _currentFrame = 0;
    int duration = 0;
    _currentInfo->getInfo(_currentFrame, &duration, nullptr);
    _frameTimer.setTimeout(duration);
    _frameTimer.reset();
}

int KXSprite::animationFinished() const {
    if (!_currentInfo || _currentInfo->loops() != 0)
        return 0;
    return _currentFrame >= _currentInfo->numberOfFrames() - 1 ? -1 : 0;
}

void KXSprite::randomizeCurrentFrame() {
    if (!_currentInfo)
        return;
    _currentFrame = KXRandomize(0, _currentInfo->numberOfFrames() - 1);
    for (int ticks = KXRandomize(0, 100); ticks > 0; --ticks)
        _frameTimer.tick();
}

// The answer of the texture cache, asked for again only when it may be another one: that takes a path to be
// formatted and found, and most sprites draw from one texture all their life.
KXTexture* KXSprite::_texture() {
    if (_knownTexture && _knownTextureGeneration == _KXTextureCacheGeneration &&
        _knownTextureWindow == _KXCurrentWindowRenderContext && _knownTexture->_isUsableHere())
        return _knownTexture;
    _knownTexture = nullptr;
    // Without a folder the name alone is the path: a file found by its bare name lies in the working
    // directory, and so does its texture.
    const char* const name = _contents->textureName->c_str();
    const char* path = _contents->texturePath ? KXTempString("%s/%s", _contents->texturePath->c_str(), name)
                                              : KXTempString("%s", name);
    KXTexture* const texture = KXTextureCacheLoad(path);
    _knownTextureGeneration = _KXTextureCacheGeneration;
    _knownTextureWindow = _KXCurrentWindowRenderContext;
    _knownTexture = texture;
    return texture;
}

void KXSprite::draw(KXPoint at) {
    if (!_contents->textureName)
        return;
    KXTexture* const texture = _texture();
    if (!texture || !_contents->currentAnimation)
        return;
    KXRect bounds = KXZeroRect;
    if (_currentInfo)
        _currentInfo->getInfo(_currentFrame, nullptr, &bounds);
    texture->draw(_KXTruncate(bounds.origin.x), _KXTruncate(bounds.origin.y),
                  _KXTruncate(bounds.origin.x + bounds.size.width),
                  _KXTruncate(bounds.origin.y + bounds.size.height), _KXTruncate(at.x), _KXTruncate(at.y),
                  _alpha, _scale, _rotation, 0, -1);
}
