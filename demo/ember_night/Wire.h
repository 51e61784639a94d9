#pragma once

#include "World.h"

// What travels between host and guest. Everything goes as whole numbers, whose digits can never spell the
// marker that ends a message.

/// The first that a guest says, by which a host tells it from whoever else comes by.
void writeGreeting(KXNetworkBuffer& buffer);
bool isGreeting(KXNetworkBuffer& buffer);

void writeInput(KXNetworkBuffer& buffer, const Input& input);
Input readInput(KXNetworkBuffer& buffer);

void writePicture(KXNetworkBuffer& buffer, const Picture& picture);
/// Reads a picture; what makes no sense in it, for it may come from anyone, is left out.
Picture readPicture(KXNetworkBuffer& buffer);
