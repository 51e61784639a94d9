#pragma once

#include "Table.h"

#include <Kobaltrix/Kobaltrix.h>

// The parts of the table. The ones that draw need the window that is current.
void benchSprites(Table& table);
void benchRectangles(Table& table);
void benchText(Table& table);
void benchWidgets(Table& table);
void benchNetwork(Table& table);
void benchFiles(Table& table);
void benchLookups(Table& table);

inline constexpr KXSize benchWindow = {800, 600};

/// A font to write with, or null where the package fonts-dejavu-core is missing.
const char* benchFont();
