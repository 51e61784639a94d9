#pragma once

/// Stands at the top of every operation that calls OpenGL. In test builds it stops the program, naming the
/// operation, if OpenGL reports an error when the operation ends; otherwise it is nothing.
#ifdef KOBALTRIX_CHECK_GL
class _KXGLCheck {
public:
    explicit _KXGLCheck(const char* operation) : _operation(operation) {}
    ~_KXGLCheck();
    _KXGLCheck(const _KXGLCheck&) = delete;
    _KXGLCheck& operator=(const _KXGLCheck&) = delete;

private:
    const char* _operation;
};
#define KX_GL_CHECK(operation) const _KXGLCheck glCheck(operation)
#else
#define KX_GL_CHECK(operation) static_cast<void>(0)
#endif
