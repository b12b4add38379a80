/** @file
 *  The effect engine, for hosts that apply a record to a picture themselves.
 *  Valid C and C++.
 */
#ifndef ZQ_ENGINE_H
#define ZQ_ENGINE_H

#include <zq/document.h>
#include <zq/platform.h>

ZQ_EXTERN_C_BEGIN

/** Told the percent done, 0 to 100, while a kernel runs, on the thread that runs it. */
typedef void(ZQ_CALL* ProgressHook)(int32_t percent);
/** Asked before each row; any answer but 0 stops the kernel, which then gives 0. */
typedef int32_t(ZQ_CALL* AbortHook)(void);

/** Non-zero (the start value): ReportProgress calls `progressHook`. */
extern int32_t progressEnabled;
/** Null at the start: progress goes nowhere. */
extern ProgressHook progressHook;
/** Non-zero (the start value): a kernel asks whether to stop. */
extern int32_t abortEnabled;
/** Null at the start: a kernel then asks for the Escape key. */
extern AbortHook abortHook;

/** Runs effect `id` on a picture.
 *
 *  @param source  the picture; read only, stays the caller's
 *  @param id      1 to 70
 *  @param params  the effect's record (params.h); may be null for effects without one
 *  @return a new DIB of the same size and depth that the caller frees, or 0: an unknown effect, a
 *          depth or a record that the effect does not take, parameters that change nothing, a block
 *          smaller than its header claims, a stop by the user, or no memory. */
DibHandle RunEffect(DibHandle source, EffectId id, const void* params);

ZQ_EXTERN_C_END

#endif
