#pragma once

#include "text/Typeface.h"

#include <Kobaltrix/KXTypes.h>

#include <FTGL/ftgl.h>

#include <memory>

/// Opens a font, which must stay meanwhile if it lies in memory, for drawing as @a mode says (polygons for
/// #KXAliasModePolygon, else textures).
///
/// FTGL trusts its callers; the face returned does not. Where the file could not be opened or no size has
/// been set, Error() is non-zero, FaceSize() of an unopened file fails, measures are 0 and nothing is drawn.
/// A face that draws with textures draws nothing when it renders: it tells #_KXCurrentGlyphRun.
/// Texts may be null or ill-formed, and without an OpenGL context glyphs are left for later. Polygons that
/// were made in another context than the current one are made again.
std::unique_ptr<FTFont> _KXOpenFace(const _KXFontSource& source, KXAliasMode mode);
