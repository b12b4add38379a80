// The one door to the platform.
//
// On Windows this is <windows.h>. Elsewhere it declares, under the names, types and values of
// Win32, just the operations that the system uses, with the semantics that Windows documents for
// them. `platform/base` implements memory, cursor and keyboard; `platform/qt` implements the rest.
#pragma once

#ifdef _WIN32

#include <zq/platform.h>

#include <commdlg.h>

#else

#include <zq/memory.h>

#include <cstdint>

// ---- Types ------------------------------------------------------------------------------------

struct HWND__;
struct HINSTANCE__;
struct HGDIOBJ__;
struct HDC__;
struct HCURSOR__;

using HWND = HWND__*;
using HINSTANCE = const HINSTANCE__*;
using HDC = HDC__*;
using HGDIOBJ = HGDIOBJ__*;
using HBRUSH = HGDIOBJ__*;
using HFONT = HGDIOBJ__*;
using HPEN = HGDIOBJ__*;
using HBITMAP = HGDIOBJ__*;
using HCURSOR = HCURSOR__*;
using HICON = void*;
using HMENU = void*;
using HFILE = int;

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using SHORT = std::int16_t;
using ATOM = std::uint16_t;
using COLORREF = std::uint32_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using INT_PTR = std::intptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using LPVOID = void*;
using LPSTR = char*;
using LPCSTR = const char*;

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
};

struct DRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    UINT_PTR itemData;
};

struct CREATESTRUCTA {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
};

struct LOGFONTA {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[32];
};

#pragma pack(push, 2)
struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
#pragma pack(pop)

struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};

struct OFSTRUCT {
    BYTE cBytes;
    BYTE fFixedDisk;
    WORD nErrCode;
    WORD Reserved1;
    WORD Reserved2;
    char szPathName[128]; // as much of the name as there is room for
};

#define CALLBACK
#define WINAPI

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);

using LPOFNHOOKPROC = UINT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

struct OPENFILENAMEA {
    DWORD lStructSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCSTR lpstrFilter;
    LPSTR lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex;
    LPSTR lpstrFile;
    DWORD nMaxFile;
    LPSTR lpstrFileTitle;
    DWORD nMaxFileTitle;
    LPCSTR lpstrInitialDir;
    LPCSTR lpstrTitle;
    DWORD Flags;
    WORD nFileOffset;
    WORD nFileExtension;
    LPCSTR lpstrDefExt;
    LPARAM lCustData;
    LPOFNHOOKPROC lpfnHook;
    LPCSTR lpTemplateName;
    void* pvReserved;
    DWORD dwReserved;
    DWORD FlagsEx;
};

struct WNDCLASSEXA {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
    HICON hIconSm;
};

// ---- Values -----------------------------------------------------------------------------------

#ifndef FALSE
#define FALSE 0
#define TRUE 1
#endif

#define MAKEINTRESOURCEA(id)                                                                       \
    (reinterpret_cast<LPCSTR>(static_cast<std::uintptr_t>(static_cast<WORD>(id))))
#define MAKEWPARAM(low, high)                                                                      \
    (static_cast<WPARAM>((static_cast<DWORD>(low) & 0xFFFFu) |                                     \
                         ((static_cast<DWORD>(high) & 0xFFFFu) << 16)))
#define MAKELPARAM(low, high)                                                                      \
    (static_cast<LPARAM>((static_cast<DWORD>(low) & 0xFFFFu) |                                     \
                         ((static_cast<DWORD>(high) & 0xFFFFu) << 16)))
#define LOWORD(value) (static_cast<WORD>(static_cast<std::uintptr_t>(value) & 0xFFFFu))
#define HIWORD(value) (static_cast<WORD>((static_cast<std::uintptr_t>(value) >> 16) & 0xFFFFu))

constexpr UINT WM_CREATE = 1;
constexpr UINT WM_DESTROY = 2;
constexpr UINT WM_SIZE = 5;
constexpr UINT WM_SETFOCUS = 7;
constexpr UINT WM_KILLFOCUS = 8;
constexpr UINT WM_SETTEXT = 12;
constexpr UINT WM_GETTEXT = 13;
constexpr UINT WM_PAINT = 15;
constexpr UINT WM_CLOSE = 16;
constexpr UINT WM_ERASEBKGND = 20;
constexpr UINT WM_DRAWITEM = 43;
constexpr UINT WM_SETFONT = 48;
constexpr UINT WM_GETFONT = 49;
constexpr UINT WM_NCCREATE = 129;
constexpr UINT WM_NCDESTROY = 130;
constexpr UINT WM_INITDIALOG = 272;
constexpr UINT WM_COMMAND = 273;
constexpr UINT WM_TIMER = 275;
constexpr UINT WM_HSCROLL = 276;
constexpr UINT WM_MOUSEMOVE = 512;
constexpr UINT WM_LBUTTONDOWN = 513;
constexpr UINT WM_LBUTTONUP = 514;
constexpr UINT WM_LBUTTONDBLCLK = 515;
constexpr UINT WM_USER = 1024;

constexpr WPARAM MK_LBUTTON = 1;

constexpr int SB_LINEUP = 0;
constexpr int SB_LINEDOWN = 1;
constexpr int SB_PAGEUP = 2;
constexpr int SB_PAGEDOWN = 3;
constexpr int SB_THUMBPOSITION = 4;
constexpr int SB_THUMBTRACK = 5;
constexpr int SB_TOP = 6;
constexpr int SB_BOTTOM = 7;
constexpr int SB_ENDSCROLL = 8;
constexpr int SB_CTL = 2;

constexpr UINT BM_GETCHECK = 240;
constexpr UINT BM_SETCHECK = 241;
constexpr UINT BM_CLICK = 245;
constexpr UINT BN_CLICKED = 0;
constexpr UINT BST_UNCHECKED = 0;
constexpr UINT BST_CHECKED = 1;

constexpr UINT EN_SETFOCUS = 256;
constexpr UINT EN_KILLFOCUS = 512;
constexpr UINT EN_CHANGE = 768;
constexpr UINT EN_UPDATE = 1024;
constexpr UINT EN_ERRSPACE = 1280;

constexpr UINT CB_ADDSTRING = 323;
constexpr UINT CB_GETCURSEL = 327;
constexpr UINT CB_SETCURSEL = 334;
constexpr LRESULT CB_ERR = -1;
constexpr UINT CBN_SELCHANGE = 1;

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;

constexpr DWORD WS_POPUP = 0x80000000;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_GROUP = 0x00020000;
constexpr DWORD WS_TABSTOP = 0x00010000;

constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000;

constexpr DWORD BS_PUSHBUTTON = 0;
constexpr DWORD BS_DEFPUSHBUTTON = 1;
constexpr DWORD BS_CHECKBOX = 2;
constexpr DWORD BS_AUTOCHECKBOX = 3;
constexpr DWORD BS_RADIOBUTTON = 4;
constexpr DWORD BS_GROUPBOX = 7;
constexpr DWORD BS_AUTORADIOBUTTON = 9;
constexpr DWORD BS_OWNERDRAW = 11;
constexpr DWORD ES_LEFT = 0;
constexpr DWORD ES_CENTER = 1;
constexpr DWORD ES_RIGHT = 2;
constexpr DWORD ES_NUMBER = 0x2000;
constexpr DWORD CBS_DROPDOWNLIST = 3;
constexpr DWORD SS_LEFT = 0;
constexpr DWORD SS_CENTER = 1;
constexpr DWORD SS_RIGHT = 2;
constexpr DWORD SS_ETCHEDFRAME = 18;
constexpr DWORD DS_SETFONT = 0x40;
constexpr DWORD DS_MODALFRAME = 0x80;
constexpr DWORD DS_CENTER = 0x800;

constexpr UINT CS_VREDRAW = 1;
constexpr UINT CS_HREDRAW = 2;
constexpr UINT CS_DBLCLKS = 8;

constexpr int GWLP_USERDATA = -21;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWL_STYLE = -16;
constexpr int GWL_ID = -12;
constexpr int GWLP_HINSTANCE = -6;
constexpr int DWLP_MSGRESULT = 0;

constexpr int SW_HIDE = 0;
constexpr int SW_SHOW = 5;

constexpr int SM_CYCAPTION = 4;

constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOZORDER = 0x0004;
constexpr UINT SWP_NOREDRAW = 0x0008;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_FRAMECHANGED = 0x0020;

constexpr UINT ODT_BUTTON = 4;
constexpr UINT ODA_DRAWENTIRE = 1;
constexpr UINT ODA_SELECT = 2;
constexpr UINT ODA_FOCUS = 4;
constexpr UINT ODS_SELECTED = 1;
constexpr UINT ODS_DISABLED = 4;
constexpr UINT ODS_FOCUS = 16;

constexpr int COLOR_MENU = 4;
constexpr int COLOR_BTNFACE = 15;

constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int BLACK_BRUSH = 4;
constexpr int BLACK_PEN = 7;
constexpr int SYSTEM_FONT = 13;
constexpr int DEFAULT_GUI_FONT = 17;

constexpr int PS_SOLID = 0;

constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;

constexpr UINT DT_CENTER = 0x01;
constexpr UINT DT_VCENTER = 0x04;
constexpr UINT DT_SINGLELINE = 0x20;

constexpr UINT EDGE_RAISED = 5;
constexpr UINT EDGE_SUNKEN = 10;
constexpr UINT BF_RECT = 15;

constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
constexpr UINT GDI_ERROR = 0xFFFFFFFF;

constexpr UINT DIB_RGB_COLORS = 0;
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr DWORD NOTSRCCOPY = 0x00330008;

constexpr DWORD OFN_OVERWRITEPROMPT = 2;
constexpr DWORD OFN_HIDEREADONLY = 4;
constexpr DWORD OFN_NOCHANGEDIR = 8;

constexpr UINT OF_READ = 0;
constexpr UINT OF_WRITE = 1;
constexpr UINT OF_READWRITE = 2;
constexpr UINT OF_CREATE = 0x1000;
constexpr HFILE HFILE_ERROR = -1;
constexpr int FILE_BEGIN = 0;
constexpr int FILE_END = 2;

constexpr int VK_ESCAPE = 27;

#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_WAIT MAKEINTRESOURCEA(32514)

extern "C" {

// ---- Cursor and keyboard (platform/base) --------------------------------------------------------

// With a null instance: one of the system's cursors. With a module: its cursor resource.
// Without a graphical platform there are no cursors and the answer is null.
ZQ_API HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name);
// Shows the cursor at once and gives the one shown before.
ZQ_API HCURSOR SetCursor(HCURSOR cursor);
ZQ_API HCURSOR GetCursor();
// High bit: the key is down now. Low bit: it went down since the last call.
ZQ_API SHORT GetAsyncKeyState(int virtualKey);

// ---- Classes and windows (platform/qt) ----------------------------------------------------------

// Whether the calling thread may show windows: that of the running application alone, or, with
// `convert`, any thread while there is none.
ZQ_API BOOL IsGUIThread(BOOL convert);
// Gives 0 when the class is registered already. Class names compare without regard to case.
ZQ_API ATOM RegisterClassExA(const WNDCLASSEXA* windowClass);
ZQ_API BOOL UnregisterClassA(LPCSTR className, HINSTANCE instance);
ZQ_API HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x,
                            int y, int width, int height, HWND parent, HMENU menu,
                            HINSTANCE instance, LPVOID param);
ZQ_API BOOL DestroyWindow(HWND window);
ZQ_API BOOL IsWindow(HWND window);
ZQ_API LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
ZQ_API LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
ZQ_API BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
ZQ_API LONG_PTR GetWindowLongPtrA(HWND window, int index);
ZQ_API LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
ZQ_API int GetClassNameA(HWND window, LPSTR buffer, int size);
ZQ_API BOOL ShowWindow(HWND window, int command);
// Unless SWP_NOZORDER is set, the window goes behind its sibling `after` in the order of Tab, too,
// or becomes the first for null.
ZQ_API BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
ZQ_API BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
ZQ_API BOOL GetClientRect(HWND window, RECT* rect);
ZQ_API BOOL GetWindowRect(HWND window, RECT* rect);
ZQ_API BOOL ScreenToClient(HWND window, POINT* point);
ZQ_API BOOL ClientToScreen(HWND window, POINT* point);
ZQ_API BOOL IsWindowVisible(HWND window);
ZQ_API BOOL IsWindowEnabled(HWND window);
ZQ_API BOOL EnableWindow(HWND window, BOOL enable);
ZQ_API HWND GetParent(HWND window);
// The window must have the style of a child by now. It becomes the first of its new siblings. Gives
// the parent, or owner, before.
ZQ_API HWND SetParent(HWND window, HWND parent);
ZQ_API int GetSystemMetrics(int index);
ZQ_API HWND SetFocus(HWND window);
ZQ_API HWND GetFocus();
ZQ_API HWND GetActiveWindow();
ZQ_API HWND FindWindowA(LPCSTR className, LPCSTR windowName);
ZQ_API BOOL SetWindowTextA(HWND window, LPCSTR text);
ZQ_API int GetWindowTextA(HWND window, LPSTR buffer, int size);
ZQ_API HWND SetCapture(HWND window);
ZQ_API BOOL ReleaseCapture();
ZQ_API HWND GetCapture();
ZQ_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
ZQ_API BOOL KillTimer(HWND window, UINT_PTR id);
ZQ_API BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
ZQ_API BOOL UpdateWindow(HWND window);
ZQ_API HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
ZQ_API BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
// For the client area, at any time but between BeginPaint and EndPaint.
ZQ_API HDC GetDC(HWND window);
ZQ_API int ReleaseDC(HWND window, HDC dc);

// ---- Dialogs and controls (platform/qt) ---------------------------------------------------------

// `parent` is a window of this layer, or the native id of a foreign one, or null.
ZQ_API INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR templateName, HWND parent,
                               DLGPROC procedure, LPARAM param);
ZQ_API BOOL EndDialog(HWND dialog, INT_PTR result);
ZQ_API HWND GetDlgItem(HWND dialog, int id);
ZQ_API int GetDlgCtrlID(HWND window);
ZQ_API BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
// The decimal number that the text begins with. Where it is none, or none that fits, 0 is given and
// `translated` says so.
ZQ_API UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned);
ZQ_API BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
ZQ_API UINT GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int size);
ZQ_API BOOL CheckRadioButton(HWND dialog, int first, int last, int check);
ZQ_API UINT IsDlgButtonChecked(HWND dialog, int id);
ZQ_API LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
ZQ_API BOOL SetScrollRange(HWND window, int bar, int minimum, int maximum, BOOL redraw);
ZQ_API BOOL GetScrollRange(HWND window, int bar, int* minimum, int* maximum);
ZQ_API int SetScrollPos(HWND window, int bar, int position, BOOL redraw);
ZQ_API int GetScrollPos(HWND window, int bar);
ZQ_API BOOL MessageBeep(UINT type);
ZQ_API int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int size);

// ---- Drawing (platform/qt) ----------------------------------------------------------------------

ZQ_API HGDIOBJ GetStockObject(int index);
ZQ_API DWORD GetSysColor(int index);
ZQ_API HBRUSH CreateSolidBrush(COLORREF color);
// Solid pens of one pixel only.
ZQ_API HPEN CreatePen(int style, int width, COLORREF color);
ZQ_API HFONT CreateFontIndirectA(const LOGFONTA* description);
ZQ_API HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
ZQ_API BOOL DeleteObject(HGDIOBJ object);
// A bitmap resource of the module.
ZQ_API HBITMAP LoadBitmapA(HINSTANCE instance, LPCSTR name);
// A context in memory, for the bitmap that is selected into it.
ZQ_API HDC CreateCompatibleDC(HDC dc);
ZQ_API BOOL DeleteDC(HDC dc);
ZQ_API int SetBkMode(HDC dc, int mode);
ZQ_API COLORREF SetTextColor(HDC dc, COLORREF color);
ZQ_API UINT SetTextAlign(HDC dc, UINT align);
// A `brush` below 256 is the number of a system colour plus 1.
ZQ_API int FillRect(HDC dc, const RECT* rect, HBRUSH brush);
// The outline by the pen, the inside by the brush.
ZQ_API BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
ZQ_API BOOL MoveToEx(HDC dc, int x, int y, POINT* before);
// Leaves the last point out.
ZQ_API BOOL LineTo(HDC dc, int x, int y);
ZQ_API BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int length);
ZQ_API int DrawTextA(HDC dc, LPCSTR text, int length, RECT* rect, UINT format);
ZQ_API BOOL DrawEdge(HDC dc, RECT* rect, UINT edge, UINT flags);
ZQ_API int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                         int sourceWidth, int sourceHeight, const void* bits,
                         const BITMAPINFO* info, UINT usage, DWORD operation);

// SRCCOPY and NOTSRCCOPY only.
ZQ_API BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX,
                   int sourceY, DWORD operation);

// ---- File dialogs (platform/qt) -----------------------------------------------------------------

// The chosen name stands in the caller's buffer, in the encoding of the file system. FALSE when
// nothing was chosen, and when the name does not fit: then its length stands in the first two
// bytes.
ZQ_API BOOL GetOpenFileNameA(OPENFILENAMEA* options);
ZQ_API BOOL GetSaveFileNameA(OPENFILENAMEA* options);

// ---- Files (platform/base) ----------------------------------------------------------------------

// HFILE_ERROR for a folder, too. Names may be longer than the structure has room for.
ZQ_API HFILE OpenFile(LPCSTR name, OFSTRUCT* file, UINT style);
// Gives the number of bytes; HFILE_ERROR when not one could be read.
ZQ_API UINT _lread(HFILE file, LPVOID buffer, UINT bytes);
ZQ_API UINT _lwrite(HFILE file, LPCSTR buffer, UINT bytes);
// Gives the new place; HFILE_ERROR where there is none, or one beyond 31 bits.
ZQ_API LONG _llseek(HFILE file, LONG offset, int origin);
ZQ_API HFILE _lclose(HFILE file);
// The file that a module was loaded from.
ZQ_API DWORD GetModuleFileNameA(HINSTANCE instance, LPSTR buffer, DWORD size);

// ---- Rectangles (platform/base) -----------------------------------------------------------------

ZQ_API BOOL OffsetRect(RECT* rect, int dx, int dy);
ZQ_API BOOL EqualRect(const RECT* first, const RECT* second);
ZQ_API BOOL IsRectEmpty(const RECT* rect);

} // extern "C"

#endif
