#pragma once

#include <Kobaltrix/KXString.h>

#include <cstddef>
#include <string_view>

/// A copy of a text of any length as a temporary string; null when memory is exhausted.
char* _KXKeepTemporarily(std::string_view text);

/// Frees every temporary string, oldest first, and empties the pool.
void _KXCleanTempStrings();

/// A block of @a size bytes that begins with an empty text, for the caller to free(); null for a size below 1
/// or when memory is exhausted.
char* _KXMakeString(int size);

/// A copy of a text, for the caller to free(). Throws std::bad_alloc, because null means that there is none.
char* _KXCopyForCaller(std::string_view text);

/// The text at the start of @a size bytes, which it may fill without a terminator.
std::string_view _KXTextIn(const char* bytes, std::size_t size);

/// Nesting count of KXDisableTemporaryStringCleanup(); the pool is freed after a step only while it is 0.
inline constinit int _KXTemporaryStringCleanupDisabledCount = 0;
