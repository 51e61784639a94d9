#pragma once

#include "render/Driver.h"

#include <cstddef>
#include <optional>

/// What the library has in an OpenGL context, and what ends with it.
struct _KXContextParts {
    unsigned context; ///< The number of the context.
    _KXDriver driver;
    std::optional<unsigned> fillPrograms[3] = {}; ///< Made when wanted; 0 where the driver cannot run it.
    unsigned whiteTexture = 0;                    ///< What shaders draw shapes with; 0 before the first.
    unsigned vertexBuffer = 0;                    ///< What the driver draws batches from; 0 before the first.
    std::size_t vertexBufferUsed = 0;             ///< How many bytes of it were written.
};

/// Begins the parts of a context, which must be current, and asks it for its driver.
void _KXAddContextParts(unsigned context);
/// Forgets the parts of a context that ends.
void _KXRemoveContextParts(unsigned context);
/// The parts of the context that is current. There must be one.
_KXContextParts& _KXCurrentContextParts();
/// Has the context that is current count as one of another driver.
void _KXSetCurrentDriver(_KXDriver driver);
