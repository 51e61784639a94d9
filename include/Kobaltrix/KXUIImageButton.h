#pragma once

#include <Kobaltrix/KXUIButton.h>

/// @file
/// Push buttons with a picture.

class KXTexture;

/// A push button with a picture in its middle, and otherwise a KXUIButton: a caption, if it is given one, is
/// drawn below the picture's pixels. Its name for those who do not know the picture is best a tooltip.
class KX_API KXUIImageButton : public KXUIButton {
public:
    /// A button without a picture.
    KXUIImageButton();
    ~KXUIImageButton() override;

    /// Sets the picture, and fits the size to it and the padding. @param texture not owned, it must live as
    /// long as the button or until another is set; null for none. @param source the part of it, as
    /// KXDrawOptions::source has it: all of it if nothing is said.
    void setTexture(KXTexture* texture, KXRect source = {{0, 0}, {-1, -1}});
    /// Sets how large the picture is drawn: 2 is twice its size. Fits the size anew.
    void setScale(float scale);
    /// Sets the extent in pixels. A width or height of -1 is fitted to the picture; without one as
    /// KXUIButton::setSize().
    void setSize(KXSize size) override;
    /// Draws the button, then the picture.
    void draw() override;

private:
    KX_INTERNAL KXSize _pictureSize() const;

    KXTexture* _texture;
    KXRect _source;
    float _scale;
};
