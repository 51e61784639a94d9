#include "core/ground/Truncate.h"
#include "render/DrawOptions.h"
#include "render/KXRenderContext.h"
#include "render/KXTexture.h"
#include "render/KXTextureCache.h"
#include "sprite/KXSprite.h"

#include <Kobaltrix/KXRandom.h>
#include <Kobaltrix/KXString.h>

#include <limits>

void KXSprite::setAnimation(const char* name) {
    _own().currentAnimation = Contents::copyOf(name);
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
    return KXTempString("%s", Contents::printable(Contents::pointerTo(_held().currentAnimation)));
}

int KXSprite::currentFrameIndex() const { return _currentFrame; }

void KXSprite::poll() {
    if (_KXFollowsFiles())
        _followFile();
    if (!_held().currentAnimation || animationFinished() || !_frameTimer.tick())
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
    const char* const name = _held().textureName->c_str();
    const char* path = _held().texturePath ? KXTempString("%s/%s", _held().texturePath->c_str(), name)
                                           : KXTempString("%s", name);
    KXTexture* const texture = KXTextureCacheLoad(path);
    _knownTextureGeneration = _KXTextureCacheGeneration;
    _knownTextureWindow = _KXCurrentWindowRenderContext;
    _knownTexture = texture;
    return texture;
}

KXRect KXSprite::_frameOnShow() const {
    KXRect bounds = KXZeroRect;
    if (_currentInfo)
        _currentInfo->getInfo(_currentFrame, nullptr, &bounds);
    return bounds;
}

void KXSprite::draw(KXPoint at) {
    if (_KXFollowsFiles())
        _followFile();
    if (!_held().textureName)
        return;
    KXTexture* const texture = _texture();
    if (!texture || !_held().currentAnimation)
        return;
    const KXRect bounds = _frameOnShow();
    texture->draw(_KXTruncate(bounds.origin.x), _KXTruncate(bounds.origin.y),
                  _KXTruncate(bounds.origin.x + bounds.size.width),
                  _KXTruncate(bounds.origin.y + bounds.size.height), _KXTruncate(at.x), _KXTruncate(at.y),
                  _alpha, _scale, _rotation, 0, -1);
}

// Adds to the options what the sprite has itself. @param part takes the part of the frame, in its pixels.
// False where there is none.
bool KXSprite::_placed(KXDrawOptions& options, KXRect& part) const {
    const KXRect bounds = _frameOnShow();
    const auto whole = [](float value) { return static_cast<float>(_KXTruncate(value)); };
    const KXPoint corner = {whole(bounds.origin.x), whole(bounds.origin.y)};
    const KXSize frame = {whole(bounds.origin.x + bounds.size.width) - corner.x,
                          whole(bounds.origin.y + bounds.size.height) - corner.y};
    options.tint.a *= _alpha;
    options.rotation += static_cast<float>(_rotation % 360);
    options.scale = {options.scale.width * _scale, options.scale.height * _scale};
    const bool isThere = _KXCutSource(options.source, frame, part);
    options.source = {{corner.x + part.origin.x, corner.y + part.origin.y}, part.size};
    return isThere;
}

void KXSprite::draw(const KXDrawOptions& options) {
    if (_KXFollowsFiles())
        _followFile();
    if (!_held().textureName)
        return;
    KXTexture* const texture = _texture();
    KXDrawOptions all = options;
    KXRect part;
    if (texture && _placed(all, part))
        texture->draw(all);
}

KXPlacedBox KXSprite::_placedRect(const KXRect& rect, const KXDrawOptions& options) const {
    KXDrawOptions all = options;
    KXRect part;
    _KXAffine placement;
    if (!_placed(all, part) || !_KXPlacePart(all, part.size, placement))
        return {};
    // From the corner of the frame to the corner of the part.
    return _KXPlacedBoxOf(placement,
                          {{rect.origin.x - part.origin.x, rect.origin.y - part.origin.y}, rect.size});
}

KXPlacedBox KXSprite::placedFrame(const KXDrawOptions& options) const {
    KXDrawOptions all = options;
    KXRect part;
    return _placed(all, part) ? _placedRect(part, options) : KXPlacedBox{};
}

KXPlacedBox KXSprite::placedBox(const char* name, const KXDrawOptions& options) const {
    return _hasBox(name) ? _placedRect(boundingBoxNamed(name), options) : KXPlacedBox{};
}
