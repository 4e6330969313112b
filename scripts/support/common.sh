# SPDX-License-Identifier: MIT
# What the scripts share: the root of the project, messages, steps with their time. To be sourced.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
readonly root
cd "$root" || exit 2

# A compiler cache, where there is one, serves every checkout alike: paths count from the root.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}

jobs=${VELMORA_JOBS:-$(nproc 2>/dev/null || echo 2)}

say() { printf '==> %s\n' "$*" >&2; }
note() { printf '    %s\n' "$*" >&2; }
fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 2
}

# The comment at the head of the calling script, without its marks, is its help.
printHelp() {
    sed -n '/^# SPDX/d; /^#!/d; /^#/!q; s/^# \{0,1\}//p' "$0"
}

# configureAndBuild PRESET [-DNAME=VALUE …] [-- TARGET …]
# Quiet where nothing has to be done, the compiler's progress otherwise.
configureAndBuild() {
    local preset=$1 log status=0
    shift
    local -a options=() targets=()
    while (($#)); do
        if [[ $1 == -- ]]; then
            shift
            targets=("$@")
            break
        fi
        options+=("$1")
        shift
    done
    mkdir -p build
    log="build/configure-$preset.log"
    note "Configuring build/$preset"
    cmake --preset "$preset" "${options[@]}" >"$log" 2>&1 || status=$?
    if ((status != 0)); then
        cat "$log" >&2
        return "$status"
    fi
    grep -E '^(CMake Warning|Word list:)|^-- Word list' "$log" | sed 's/^-- /    /' >&2 || true
    ninja -C "build/$preset" -j "$jobs" "${targets[@]}"
}

# The word list where it can be had; the program works on its seed entries without it.
fetchDictionary() {
    scripts/fetch-dictionary >/dev/null || say "No word list: going on with the nine seed entries"
}
