#pragma once

#include <Kobaltrix/KXUITheme.h>

#include <cstdint>
#include <memory>

class KXTexture;

// What the views draw with: through the theme, and collected by a batch.

/// The colours of widgets: of the theme, or of those that it leaves alone.
KXUIPalette currentPalette();
/// A colour with another opacity.
KXColor faded(KXColor color, float opacity);
/// The colour of a number 0xRRGGBBAA.
KXColor colorOf(std::uint32_t rgba);
/// Black or white, whichever is easier to read on a colour.
KXColor inkOn(KXColor color);

/// A line of text in the font of the interface, as it is written. @param place the top left corner of the
/// line, which is lineHeight() high: with room above and below capitals, and as much before and behind the
/// text.
void drawText(KXPoint place, KXColor color, const char* text);
float lineHeight();
/// How wide such a line is.
float textWidth(const char* text);
/// The same on a plate of its size.
void drawPlate(KXPoint place, KXColor plate, KXColor color, const char* text);
/// The same with a border, in the colours of menus, moved as far as needed to lie in a rectangle.
void drawTag(const KXRect& within, KXPoint place, const char* text);
/// A rectangle's edges, so many points wide, inside of it.
void drawFrame(const KXRect& rect, float width, KXColor color);
/// The same, to be seen on every picture: with a dark line around.
void drawOutline(const KXRect& rect, float width, KXColor color);

/// What two rectangles have in common; no width or height below 0.
KXRect common(const KXRect& one, const KXRect& other);

/// The squares that are seen through what is transparent, light or dark as the theme is.
class Checkers {
public:
    Checkers();
    ~Checkers();

    /// Draws as much of a rectangle as lies in another; the squares begin with its corner.
    void draw(const KXRect& all, const KXRect& within);

private:
    std::unique_ptr<KXTexture> _texture;
};
