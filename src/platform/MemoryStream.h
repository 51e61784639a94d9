#pragma once

#include <cstddef>
#include <cstdio>

/// Opens a stream that writes into a block that grows. Null if memory is exhausted.
/// @param content the block, for the caller to free() after the stream was closed, which completes it.
/// @param size how many bytes were written.
std::FILE* _KXOpenMemory(char** content, std::size_t* size);
