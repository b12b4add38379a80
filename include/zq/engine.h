/** @file
 *  The library `zqengine`: the effects themselves, for hosts that apply a record to a picture.
 *
 *  Every thread may run effects, several at once. The four hook variables are shared by all
 * threads: set them while no effect runs. The dialogs have an engine of their own, which these
 * hooks do not reach. Valid C and C++.
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
extern ZQ_ENGINE_DATA int32_t progressEnabled;
/** Null at the start: progress goes nowhere. */
extern ZQ_ENGINE_DATA ProgressHook progressHook;
/** Non-zero (the start value): a kernel asks whether to stop. */
extern ZQ_ENGINE_DATA int32_t abortEnabled;
/** Null at the start: a kernel then asks for the Escape key. */
extern ZQ_ENGINE_DATA AbortHook abortHook;

/** Runs effect `id` on a picture.
 *
 *  @param source  the picture; read only, stays the caller's
 *  @param id      1 to 70
 *  @param params  the effect's record (params.h); may be null for effects without one
 *  @return a new DIB of the same size and depth that the caller frees, or 0: an unknown effect, a
 *          depth or a record that the effect does not take, parameters that change nothing, a block
 *          smaller than its header claims, a stop by the user, or no memory. */
ZQ_API DibHandle RunEffect(DibHandle source, EffectId id, const void* params);

/** Runs an effect on a layer the way that the dialogs' previews do: on its image, or, for effects
 *  that move or mix pixels, on image and mask together, so that nothing hidden comes to light.
 *
 *  @param entry         its `image` and `mask` are replaced by the results. On failure both are as
 *                       before
 *  @param id            the effect
 *  @param params        the effect's record, as for RunEffect
 *  @param keepOriginal  0: the replaced DIBs are freed here; else the caller still owns them
 *  @param ignoreMask    non-zero: the mask is left out of it
 *  @return 1, or 0 when the effect gave no picture. Effects that move or mix pixels give 1 also
 * when nothing was changed, as on an entry without a mask: compare the handles. */
ZQ_API uint8_t ApplyEffectToLayer(LayerEntry* entry, EffectId id, const void* params,
                                  uint8_t keepOriginal, uint8_t ignoreMask);

ZQ_EXTERN_C_END

#endif
