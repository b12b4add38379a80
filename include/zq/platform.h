/** @file
 *  The few platform words that the public headers share.
 *
 *  On Windows everything comes from <windows.h>. Elsewhere the system brings its own small layer
 *  with the same names, types and values; this header declares just the types that a host meets.
 *  Valid C and C++.
 */
#ifndef ZQ_PLATFORM_H
#define ZQ_PLATFORM_H

#include <stddef.h>
#include <stdint.h>

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

/** Calling convention of the exports, the imaging library's calls and the engine's hooks. */
#define ZQ_CALL __stdcall
/** Marks a function of a shared library; on Windows the .def files name the exports. */
#define ZQ_API
/** Marks a variable of `zqengine`. A host that uses the DLL defines ZQ_ENGINE_DLL; its CMake
 * package does so. */
#ifdef ZQ_ENGINE_DLL
#define ZQ_ENGINE_DATA __declspec(dllimport)
#else
#define ZQ_ENGINE_DATA
#endif

#else

/** Calling convention of the exports and hooks; on Windows `__stdcall`. */
#define ZQ_CALL
/** Marks a function of a shared library. */
#define ZQ_API __attribute__((visibility("default")))
/** Marks a variable of `zqengine`. */
#define ZQ_ENGINE_DATA ZQ_API

typedef void* HGLOBAL;     /**< a block of memory.h */
typedef unsigned int UINT; /**< flags */
typedef int BOOL;          /**< 0 is no, anything else yes */
typedef size_t SIZE_T;     /**< a size in bytes */

#endif

/** @def ZQ_EXTERN_C_BEGIN
 *  Opens the declarations that C and C++ share.
 *  @def ZQ_EXTERN_C_END
 *  Closes them. */
#ifdef __cplusplus
#define ZQ_EXTERN_C_BEGIN extern "C" {
#define ZQ_EXTERN_C_END }
#else
#define ZQ_EXTERN_C_BEGIN
#define ZQ_EXTERN_C_END
#endif

#endif
