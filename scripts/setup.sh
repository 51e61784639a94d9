# shellcheck shell=bash disable=SC2034
# What ./check, ./play, ./bench and scripts/site share: the packages they need, and quiet building. Sourced, never run.
set -euo pipefail
# Whoever starts us may have closed standard input; the first file opened would then take its place.
[[ -t 0 ]] || exec </dev/null

install_failed=0
root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd -P)

# One job a processor, as long as each finds a gigabyte of memory.
jobs=$(nproc 2>/dev/null || getconf _NPROCESSORS_ONLN)
if [[ -r /proc/meminfo ]]; then
    gigabytes=$(awk '$1 == "MemAvailable:" { print int($2 / 1048576) }' /proc/meminfo)
    if ((jobs > gigabytes)); then jobs=$gigabytes; fi
fi
if ((jobs < 1)); then jobs=1; fi
export CMAKE_BUILD_PARALLEL_LEVEL=$jobs CTEST_PARALLEL_LEVEL=$jobs
# Without this, ccache does not keep what is compiled with precompiled headers.
export CCACHE_SLOPPINESS=pch_defines,time_macros

build_packages=(
    g++ cmake ninja-build pkg-config ccache
    libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libftgl-dev libfreetype-dev libgl-dev libglu1-mesa-dev
    libgl1-mesa-dri libegl1 fonts-dejavu-core nlohmann-json3-dev zlib1g-dev libzstd-dev
    libharfbuzz-dev libfribidi-dev libunibreak-dev libfontconfig-dev libgif-dev libstb-dev
)
site_packages=(doxygen python3-markdown-it)
check_packages=(
    "${site_packages[@]}"
    libgtest-dev clang-format fontconfig xvfb openbox weston xdotool x11-utils binutils dpkg-dev file castxml lintian
    mmdebstrap uidmap appstream desktop-file-utils g++-mingw-w64-x86-64-posix
    fonts-lohit-deva fonts-droid-fallback fonts-symbola fonts-noto-color-emoji
)
look_packages=(chromium fonts-dejavu-core)
# For Windows; what Debian has no packages of is built from its sources (scripts/windows-dependencies).
windows_packages=(
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix libz-mingw-w64-dev make gperf dpkg-dev xz-utils wine wine64
    nsis imagemagick librsvg2-bin icoutils unzip
)

say() { printf '%s\n' "$*"; }

# The project's own C++ files, their names ended by a zero byte; a copy may have come without its repository.
sources() {
    local file
    { git ls-files -z --error-unmatch '*.h' '*.cpp' 2>/dev/null ||
        find . '(' -path ./build -o -name '.?*' ')' -prune -o '(' -name '*.h' -o -name '*.cpp' ')' -printf '%P\0'; } |
        while IFS= read -r -d '' file; do
            if [[ -f $file ]]; then printf '%s\0' "$file"; fi
        done
}

# step NAME MESSAGE COMMAND...: says MESSAGE and runs the command; its output is only seen when it fails.
step() {
    local log=$root/build/$1.log message=$2
    shift 2
    say "$message"
    mkdir -p -- "$root/build" || return
    "$@" >"$log" 2>&1 && return
    say "Failed: $message" "This is the end of $log:"
    tail -n 50 -- "$log"
    return 1
}

have_tools() {
    local tool missing=()
    for tool in c++ cmake ninja pkg-config; do
        command -v "$tool" >/dev/null || missing+=("$tool")
    done
    ((${#missing[@]} == 0)) || { say "These programs are missing: ${missing[*]}." && return 1; }
}

# The names among the given ones that are not installed, on one line.
missing_packages() {
    comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p' | sort) |
        paste -s -d ' '
}

# sudo may only ask for a password where somebody can read the question and type the answer.
may_use_sudo() {
    command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [[ -t 1 && -t 2 ]] && sudo -v; }; }
}

apt_get() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120 "$@"; }
apt_install() { apt_get update && apt_get install --no-install-recommends "$@"; }

# ensure_packages NAME...: installs those that are missing. Fails when there is no going on without them.
ensure_packages() {
    local as_root=() missing
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "This is not Debian. What Debian calls the following has to be there: $*"
        have_tools
        return
    fi
    missing=$(missing_packages "$@")
    [[ $missing ]] || return 0
    say "These packages are missing: $missing"
    if ((EUID != 0)); then
        if ! may_use_sudo; then
            say "Only root may install them. Please type this as root, and start again:"
            say "  apt-get update && apt-get install --no-install-recommends $missing"
            return 1
        fi
        as_root=(sudo)
    fi
    # shellcheck disable=SC2086 # one word for each package
    step packages "Installing them..." apt_install $missing && return
    say "The packages could not be installed. Is there a network, and are the package sources right?"
    install_failed=1
    have_tools && say "Going on without them."
}

# configure PRESET OPTION...: a folder that was configured elsewhere, and then copied, is begun anew.
configure() {
    local preset=$1 cache=$root/build/$1/CMakeCache.txt
    shift
    if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
        set -- --fresh "$@"
    fi
    cmake -S "$root" --preset "$preset" "$@"
}

build() { cmake --build "$root/build/$1" "${@:2}"; }
