/** @file
 *  The three functions of the library `zqUi`. Valid C and C++.
 *
 *  One dialog or browser is open at a time. A call while another one is open, say from a timer of
 *  the host that fires meanwhile, opens nothing, leaves the buffer alone and gives 0; the open one
 *  goes on as if nothing had happened.
 *
 *  Call them on the user-interface thread: that of the running Qt application or, where the library
 *  makes one, that of the first call. On any other thread they do nothing and give 0. On Windows
 *  any thread will do that may own windows.
 *
 *  The document must stay valid and unchanged while a call runs; it is only read.
 */
#ifndef ZQ_ZQUI_H
#define ZQ_ZQUI_H

#include <zq/document.h>
#include <zq/params.h>
#include <zq/platform.h>

ZQ_EXTERN_C_BEGIN

/** Shows the dialog of one effect and gives the chosen record back.
 *
 *  @param effectId     number of the effect
 *  @param parent       owner of the dialog: on Windows an HWND, elsewhere the native id of a window
 *                      (a Qt window's WId, an X11 window) cast to a pointer; null for none
 *  @param document     the picture; its current layer needs an image and a mask
 *  @param paramBuffer  room for the effect's record (params.h), aligned as the record is; read it
 *                      only after the result 1
 *  @return 1 after OK; 0 after Cancel, without `paramBuffer`, and while another dialog is open; -2
 *          for an effect without a dialog, and where a dialog that works in the buffer cannot be
 *          made */
ZQ_API int32_t ZQ_CALL GetZQParam(int32_t effectId, void* parent, DocHandle document,
                                  void* paramBuffer);

/** Shows the Effect Browser and gives the chosen effect and its record back.
 *
 *  @param parent       as above
 *  @param document     as above; without one the browser shows no effect
 *  @param effectId     receives the number of the chosen effect. It follows the list while the
 *                      browser is open, and counts only after the result 1
 *  @param paramBuffer  room for the largest record that the browser can offer (16 bytes), whatever
 *                      `bufferSize` says. The dialogs work in it meanwhile; read it only after the
 *                      result 1
 *  @param bufferSize   how many bytes of the accepted record are sure to be back in the buffer: at
 *                      most 300, and none for a negative number. Below 8, Maximum and Minimum
 *                      cannot be told apart, and the buffer's second word says which one both are
 *  @return 1 after OK; 0 after Cancel, without `effectId` or `paramBuffer`, and while another
 *          dialog is open */
ZQ_API int32_t ZQ_CALL GetZQBrowserParam(void* parent, DocHandle document, int32_t* effectId,
                                         void* paramBuffer, int32_t bufferSize);

/** Sets the three words that every preview hands to the imaging library as its background, from the
 *  next paint on. They are 0 until then and last for the process. With the library that comes
 * along:
 *
 *  @param word0  0 a checkerboard in greys, 1 the plain colour `word1`, 2 a checkerboard of both
 *  @param word1  a colour, 0x00BBGGRR
 *  @param word2  a colour
 *  @return 1; 0, with nothing set, on a thread that may not show dialogs */
ZQ_API int32_t ZQ_CALL GetZquiBackgroundSetting(int32_t word0, uint32_t word1, uint32_t word2);

ZQ_EXTERN_C_END

#endif
