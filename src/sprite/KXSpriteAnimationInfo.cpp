#include <Kobaltrix/KXSprite.h>

KXSpriteFrameInfo::KXSpriteFrameInfo() : _duration(0), _bounds(KXZeroRect) {}

void KXSpriteFrameInfo::setDuration(int duration) { _duration = duration; }

int KXSpriteFrameInfo::duration() const { return _duration; }

void KXSpriteFrameInfo::setBounds(KXRect bounds) { _bounds = bounds; }

KXRect KXSpriteFrameInfo::bounds() const { return _bounds; }

KXSpriteAnimationInfo::KXSpriteAnimationInfo() : _loops(-1) {}

bool KXSpriteAnimationInfo::_validateFrameIndex(int i) const { return i >= 0 && i < numberOfFrames(); }

int KXSpriteAnimationInfo::numberOfFrames() const { return static_cast<int>(_frames.size()); }

int KXSpriteAnimationInfo::loops() const { return _loops; }

void KXSpriteAnimationInfo::setLoops(int loops) { _loops = loops; }

void KXSpriteAnimationInfo::getInfo(int i, int* duration, KXRect* bounds) const {
    if (!_validateFrameIndex(i))
        return;
    const KXSpriteFrameInfo& frame = _frames[static_cast<std::size_t>(i)];
    if (duration)
        *duration = frame.duration();
    if (bounds)
        *bounds = frame.bounds();
}

void KXSpriteAnimationInfo::setInfo(int i, int duration, KXRect bounds) {
    if (!_validateFrameIndex(i))
        return;
    KXSpriteFrameInfo& frame = _frames[static_cast<std::size_t>(i)];
    frame.setDuration(duration);
    frame.setBounds(bounds);
}

void KXSpriteAnimationInfo::insertFrameInfo(int i, int duration, KXRect bounds) {
    if (i < 0 || i > numberOfFrames())
        return;
    _frames.emplace(_frames.begin() + i);
    setInfo(i, duration, bounds);
}

void KXSpriteAnimationInfo::removeInfo(int i) {
    if (_validateFrameIndex(i))
        _frames.erase(_frames.begin() + i);
}

KXSize KXSpriteAnimationInfo::_fullSize() const {
    KXSize full = KXZeroSize;
    for (const KXSpriteFrameInfo& frame : _frames) {
        // KXMaxf() gives its second argument where the first is not a number, so such an extent does not
        // count.
        full.width = KXMaxf(frame.bounds().size.width, full.width);
        full.height = KXMaxf(frame.bounds().size.height, full.height);
    }
    return full;
}
