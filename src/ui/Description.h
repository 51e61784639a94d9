#pragma once

#include <Kobaltrix/KXUIWidget.h>

#include <string>

/// What of a text is read: without its colour spans.
std::string _KXSpokenText(const char* text);
/// Adds a word to what else is to be said.
void _KXAddState(KXUIDescription& said, const char* word);
