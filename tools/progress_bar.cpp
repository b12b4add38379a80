#include "tools/progress_bar.h"

#include "platform/system/system.h"
#include "platform/types.h"
#include <zq/engine.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr i32 kWidth = 40;

i32 shownPercent = -1;

void ZQ_CALL Draw(i32 percent) {
    if (percent == shownPercent) {
        return;
    }
    shownPercent = percent;
    const i32 filled = std::clamp(percent, 0, 100) * kWidth / 100;
    const std::string bar(static_cast<std::size_t>(filled), '#');
    std::fprintf(stderr, "\r[%-*s] %3d %%", kWidth, bar.c_str(), percent);
    std::fflush(stderr);
}

} // namespace

ProgressBar::ProgressBar() {
    if (ErrorsGoToTerminal()) {
        progressHook = Draw;
    }
}

ProgressBar::~ProgressBar() {
    progressHook = nullptr;
    if (shownPercent >= 0) {
        shownPercent = -1;
        std::fputs("\r\033[K", stderr);
    }
}
