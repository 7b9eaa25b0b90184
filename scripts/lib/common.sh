# Sourced by every script here.
set -euo pipefail

SFX_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
SFX_CACHE="${SFX_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/sfx}"
# One cache serves every clone: paths below the tree count as relative.
export CCACHE_BASEDIR="$SFX_ROOT" CCACHE_NOHASHDIR=1

# A test waits more than it computes.
TEST_JOBS=$(($(nproc) + 1))

step() { printf '== %s\n' "$*"; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "not root and no sudo: cannot run '$*'"
    fi
}

# need PACKAGE...: installs what is missing; without anything missing it touches neither apt nor sudo.
need() {
    command -v apt-get >/dev/null || fail "apt-get not found: install by hand: $*"
    local package missing=()
    for package in "$@"; do
        # Virtual names and alternatives are not used here, so the exact status decides.
        case "$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null)" in
            *" installed") ;;
            *) missing+=("$package") ;;
        esac
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    step "installing ${missing[*]}"
    local log
    log="$(mktemp)"
    if ! {
        as_root apt-get -q update &&
            as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y --no-install-recommends \
                -o Dpkg::Use-Pty=0 install "${missing[@]}"
    } >"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        fail "apt-get could not install ${missing[*]} (whole log: $log)"
    fi
    rm -f "$log"
}

# quietly LOG COMMAND...: the output goes to LOG and is shown only when the command fails.
quietly() {
    local log="$1"
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 40 "$log" >&2
        fail "'$1 ${2-}' failed (whole log: $log)"
    fi
}
