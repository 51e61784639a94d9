# shellcheck shell=bash disable=SC2034
# What the packaging tests share. Sourced; the test's environment says where things are.
set -euo pipefail
here=$SOURCE/tests/packaging
rm -rf -- "$SCRATCH"
mkdir -p -- "$SCRATCH"
cd -- "$SCRATCH"
# Where this machine may have another one installed, it is not the one to test.
export CMAKE_PREFIX_PATH=$PREFIX PKG_CONFIG_PATH=$PREFIX/$LIBDIR/pkgconfig
unset LD_LIBRARY_PATH DESTDIR

# The package of the shared library.
RUNTIME=libkobaltrix${SONAME#libKobaltrix.so.}

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# same_files FOLDER LIST: the folder holds the files of the list and no others.
same_files() {
    local headers=("$SOURCE"/include/Kobaltrix/*.h)
    headers=("${headers[@]##*/}")
    while IFS= read -r line; do
        line=${line//@LIBDIR@/$LIBDIR}
        line=${line//@VERSION@/$VERSION}
        line=${line//@SONAME@/$SONAME}
        line=${line//@RUNTIME@/$RUNTIME}
        case $line in
        *'@HEADERS@') printf '%s\n' "${headers[@]/#/${line%@HEADERS@}}" ;;
        *) printf '%s\n' "$line" ;;
        esac
    done <"$here/expected/$2" | LC_ALL=C sort >"$SCRATCH/expected-$2"
    (cd "$1" && find . ! -type d -printf '%P\n') | LC_ALL=C sort >"$SCRATCH/found-$2"
    diff -u "$SCRATCH/expected-$2" "$SCRATCH/found-$2" || fail "Not the files of $2."
}

needed() { readelf --dynamic "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'; }

# links_shared PROGRAM, links_static PROGRAM: which of the libraries it was linked with.
links_shared() { needed "$1" | grep -qxF "$SONAME" || fail "$1 does not link $SONAME."; }
links_static() {
    if needed "$1" | grep -q Kobaltrix; then fail "$1 links the shared library."; fi
}

# build_game FOLDER OPTION...: configures and builds the project of a game into build/.
build_game() {
    local folder=$1
    shift
    configure_game "$folder" build "$@" && cmake --build build
}
# configure_game SOURCE-FOLDER BUILD-FOLDER OPTION...
configure_game() { cmake -S "$1" -B "$2" -G Ninja --no-warn-unused-cli -DCMAKE_CXX_COMPILER="$CXX" -DWANTED="${VERSION%.*}" "${@:3}"; }

# ask_pkg_config OPTION...: its answer, word by word, in the array flags.
flags=()
ask_pkg_config() {
    local answer
    answer=$(pkg-config "$@")
    eval "flags=($answer)" # it escapes what a shell would take for more
}
