#pragma once

/// @file
/// Compiler and platform differences that the public headers need.

#if defined(_WIN32)
#if defined(KX_SHARED_LIBRARY)
#define KX_API __declspec(dllimport)
#elif defined(KX_EXPORTS) // by compilers that make no list of it
#define KX_API __declspec(dllexport)
#else
#define KX_API
#endif
#define KX_INTERNAL
#elif defined(__GNUC__) || defined(__clang__)
/// Marks what the shared library exports.
#define KX_API __attribute__((visibility("default")))
/// Marks a member of an exported class that serves the library itself; games cannot link to it.
#define KX_INTERNAL __attribute__((visibility("hidden")))
#else
#define KX_API
#define KX_INTERNAL
#endif

#if defined(__MINGW32__)
#define KX_PRINTF(formatIndex, firstArgument) __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#elif defined(__GNUC__) || defined(__clang__)
/// Lets the compiler check the arguments of a printf-like function.
#define KX_PRINTF(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define KX_PRINTF(formatIndex, firstArgument)
#endif

/// Behind a declaration: compilers that can warn with @a text of a call whose arguments are known and meet
/// @a condition.
#if defined(__clang__)
#if __has_attribute(diagnose_if)
#define KX_WARN_IF(condition, text)                                                                          \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wgcc-compat\"")                    \
        __attribute__((diagnose_if(condition, text, "warning"))) _Pragma("clang diagnostic pop")
#endif
#endif
#ifndef KX_WARN_IF
#define KX_WARN_IF(condition, text)
#endif

/// Stands before the members of exported classes that serve the library itself. Its tests link the static
/// library and reach them; to a game that links the shared one, where they are not to be had, they are
/// private.
#ifdef KX_SHARED_LIBRARY
#define KX_LIBRARY_ONLY private:
#else
#define KX_LIBRARY_ONLY public:
#endif
