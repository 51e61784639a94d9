#include "render/VertexStream.h"

#include "render/ContextParts.h"
#include "render/GLFunctions.h"

_KXStreamRoom _KXMapVertexStream(std::size_t bytes) {
    constexpr std::size_t capacity = 4 << 20; // several full batches, so the driver has time to draw them
    if (!_KXGL.genBuffers || bytes > capacity)
        return {};
    _KXContextParts& context = _KXCurrentContextParts();
    const bool isNew = context.vertexBuffer == 0;
    if (isNew)
        _KXGL.genBuffers(1, &context.vertexBuffer);
    _KXGL.bindBuffer(GL_ARRAY_BUFFER, context.vertexBuffer);
    if (isNew || context.vertexBufferUsed + bytes > capacity) {
        // The driver draws from the full one as long as it needs, and gives another.
        _KXGL.bufferData(GL_ARRAY_BUFFER, capacity, nullptr, GL_STREAM_DRAW);
        context.vertexBufferUsed = 0;
    }
    const std::size_t offset = context.vertexBufferUsed;
    context.vertexBufferUsed += bytes;
    void* const room =
        _KXGL.mapBufferRange(GL_ARRAY_BUFFER, static_cast<GLintptr>(offset), static_cast<GLsizeiptr>(bytes),
                             GL_MAP_WRITE_BIT | GL_MAP_INVALIDATE_RANGE_BIT | GL_MAP_UNSYNCHRONIZED_BIT);
    if (!room) {
        glGetError();                        // out of memory: told here, not by the next check that finds it
        context.vertexBufferUsed = capacity; // another buffer is asked for next time
    }
    return {room, offset};
}

bool _KXUnmapVertexStream() {
    const bool isThere = _KXGL.unmapBuffer(GL_ARRAY_BUFFER) == GL_TRUE;
    if (!isThere)
        glGetError();
    return isThere;
}
