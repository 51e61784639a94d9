#pragma once

#include "Document.h"

/// What a game gets from a sprite file. Throws a Fault for a file that cannot be read to its end.
Document loadDocument(const std::string& path);

/// Writes a sprite file. Throws a Fault unless all of it arrived.
void saveDocument(const Document& document, const std::string& path);
