#pragma once

#include <cstddef>

/// Room for corners in the driver's own memory.
struct _KXStreamRoom {
    void* bytes;        ///< To be written once, front to back; null where there is none.
    std::size_t offset; ///< Where they lie in the buffer, as OpenGL's arrays have it.
};

/// Binds the context's stream and makes room in it. What was written before stays until it is drawn, and
/// nothing waits for that.
_KXStreamRoom _KXMapVertexStream(std::size_t bytes);
/// Hands the room over to the driver. False if what was written is lost.
bool _KXUnmapVertexStream();
