#include <Kobaltrix/KXUIImageButton.h>

#include "ui/WidgetDrawing.h"

#include <Kobaltrix/KXTexture.h>

#include <cmath>

KXUIImageButton::KXUIImageButton() : _texture(nullptr), _source{{0, 0}, {-1, -1}}, _scale(1) {}

KXUIImageButton::~KXUIImageButton() = default;

void KXUIImageButton::setTexture(KXTexture* texture, KXRect source) {
    _texture = texture;
    _source = source;
    setSize({-1, -1});
}

void KXUIImageButton::setScale(float scale) {
    _scale = scale;
    setSize({-1, -1});
}

static KXDrawOptions optionsFor(KXRect source, float scale) {
    KXDrawOptions options;
    options.source = source;
    options.scale = {scale, scale};
    return options;
}

KXSize KXUIImageButton::_pictureSize() const {
    return _texture ? _texture->placed(optionsFor(_source, _scale)).bounds.size : KXZeroSize;
}

void KXUIImageButton::setSize(KXSize size) {
    if (!_texture)
        return KXUIButton::setSize(size);
    const KXSize asked = size, picture = _pictureSize();
    if (size.width == -1)
        size.width = std::ceil(picture.width) + 2 * KXUIWidgetInnerPadding.width;
    if (size.height == -1)
        size.height = std::ceil(picture.height) + 2 * KXUIWidgetInnerPadding.height;
    KXUIButton::setSize(size);
    _noteAskedSize(asked);
}

void KXUIImageButton::draw() {
    KXUIButton::draw();
    const _KXWidgetDrawing drawing(*this);
    if (!drawing || !_texture)
        return;
    const auto [corner, size] = rect();
    const KXSize picture = _pictureSize();
    KXDrawOptions options = optionsFor(_source, _scale);
    options.position = {std::floor(corner.x + (size.width - picture.width) / 2),
                        std::floor(corner.y + (size.height - picture.height) / 2)};
    options.tint = _KXWidgetColor({1, 1, 1, 1});
    _texture->draw(options);
}
