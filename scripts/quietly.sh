# shellcheck shell=bash
# Sourced by the project's scripts.

# quietly LOG COMMAND...: runs a command with its output in LOG, which is shown when it fails.
quietly() {
    local log=$1 status=0
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 || status=$?
    if ((status != 0)); then
        tail -n 100 "$log" >&2
        echo "failed ($status): $*" >&2
        echo "the whole output is in $log" >&2
    fi
    return "$status"
}

# Lets a compiler cache speed up builds where one is installed.
use_ccache() {
    if command -v ccache >/dev/null; then
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
        # Without these it passes precompiled headers by.
        export CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
}
