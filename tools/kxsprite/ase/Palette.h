#pragma once

#include "AseSprite.h"
#include "Bytes.h"

/// The palette in force while an .aseprite file is read from frame to frame.
class AsePaletteReader {
public:
    /// A chunk of today.
    void readChunk(AseBytes& chunk);
    /// A chunk of old files. @param bits 6 or 8, of each number.
    void readOldChunk(AseBytes& chunk, int bits);

    const AsePalette& palette() const { return _palette; }
    /// Whether it was changed since this was asked before.
    bool takeChanged();

private:
    AsePalette _palette = AsePalette(256, KXPixel{0, 0, 0, 255});
    bool _isOfToday = false; ///< Old chunks then only repeat what is known.
    bool _changed = true;
};
