#include "tests/drive/drive.h"

#include <utility>

namespace {

std::function<void()> waiting;

void CALLBACK RunWaiting(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    std::exchange(waiting, nullptr)();
}

} // namespace

void RunSoon(std::function<void()> action) {
    waiting = std::move(action);
    SetTimer(nullptr, 0, 10, RunWaiting);
}

POINT MiddleOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right / 2, client.bottom / 2};
}
