#!/usr/bin/env bash
# windows_alone.sh PROJECT FOLDER: what is for Windows alone compiles without a warning, and so do the public headers there.
set -euo pipefail
project=$1 folder=$2
compiler=(x86_64-w64-mingw32-g++-posix -Iinclude -Isrc -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wno-sign-conversion -Wnon-virtual-dtor -Wold-style-cast -Wformat=2 -Werror)
command -v "${compiler[0]}" >/dev/null || { printf 'There is no %s.\n' "${compiler[0]}" && exit 77; }
cd "$project"
rm -rf -- "$folder"
mkdir -p -- "$folder"

# Read once, since they are most of the work; that each file includes what it uses, a build for Windows tells.
printf '#include <%s>\n' winsock2.h windows.h algorithm filesystem string vector >"$folder/common.h"
"${compiler[@]}" -std=c++20 -x c++-header "$folder/common.h" -o "$folder/common.h.gch"
mkdir "$folder/include"
ln -s /usr/include/fontconfig "$folder/include" # the same header everywhere
status=0 count=0
for source in src/*/*_windows.cpp src/platform/SocketAddress.cpp; do
    "${compiler[@]}" -std=c++20 -fsyntax-only -Winvalid-pch -include "$folder/common.h" -isystem "$folder/include" "$source" || status=1
    count=$((count + 1))
done
((count > 10)) || { status=1 && printf 'The files for Windows are elsewhere.\n'; }
for use in -DKX_SHARED_LIBRARY -DKX_EXPORTS -UKX_EXPORTS; do # the DLL's game, the DLL, the static library's game
    printf '#include <%s>\n' windows.h Kobaltrix/Kobaltrix.h | "${compiler[@]}" -std=c++11 -fsyntax-only $use -x c++ - || status=1
done
exit $status
