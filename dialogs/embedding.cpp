#include "dialogs/embedding.h"

HWND browserWindow = nullptr;

void FinishEmbedded(HWND dialog) {
    if (browserWindow != nullptr && dialog != nullptr) {
        EndDialog(browserWindow, 1);
    }
}
