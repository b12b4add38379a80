// A line on stderr that shows how far a kernel is, when stderr is a terminal.
#pragma once

// Draws while it lives and wipes itself away at its end. One at a time: it sits in the engine's
// hook.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
};
