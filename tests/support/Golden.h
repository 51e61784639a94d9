#pragma once

#include "support/Image.h"

/// Expects an image to be the one that is kept in tests/golden/@a name.png.
///
/// A failure writes NAME.expected.png, NAME.actual.png and NAME.difference.png into the test's working
/// folder. With KOBALTRIX_UPDATE_GOLDEN set in the environment the kept image is written anew instead: look
/// at it.
/// @param tolerance how far apart channels may lie. @param allowed pixels that may lie further apart: edges
/// that another driver rounds otherwise.
void expectGolden(const Image& actual, const std::string& name, int tolerance = 2, int allowed = 0);
