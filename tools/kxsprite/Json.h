#pragma once

#include "Value.h"

/// Whether a JSON text is one of our own.
bool isOwnJson(const Value& root);
/// The document that our own JSON describes. Throws a Fault.
Document documentFromJson(const Value& root);
/// The JSON that documentFromJson() takes back unchanged. Throws a Fault for what JSON cannot say.
std::string jsonFromDocument(const Document& document);

/// A text as JSON has it, in quotes. Throws a Fault where it is not UTF-8.
std::string jsonFromText(const std::string& text);
