#!/usr/bin/env bash
# macos_configured.sh PROJECT FOLDER: CMake makes a build for macOS of the project, with the library as a framework and the
# files that are for macOS. What it would build it cannot build here; tests/platform compiles those files.
set -euo pipefail
project=$1 folder=$2
rm -rf -- "$folder"
framework=/System/Library/Frameworks/OpenGL.framework
cmake -S "$project" -B "$folder" -G Ninja -DCMAKE_SYSTEM_NAME=Darwin -DCMAKE_SYSTEM_PROCESSOR=arm64 \
    -DCMAKE_CXX_COMPILER_WORKS=ON -DOPENGL_gl_LIBRARY=$framework -DOPENGL_INCLUDE_DIR="$project/tests/platform/macos" \
    -DGIF_LIBRARY="$(c++ -print-file-name=libgif.so)" -DKOBALTRIX_BUILD_TESTS=OFF --log-level=WARNING
cd "$folder"
status=0
# has FILE TEXT
has() { grep -qF -- "$2" "$1" || { status=1 && printf '%s lacks %s\n' "$1" "$2"; }; }
for source in "$project"/src/platform/*_macos.cpp; do has build.ninja " $source "; done
if grep -E 'platform/[A-Za-z]+_(linux|windows)\.cpp' build.ninja; then status=1; fi
has build.ninja 'build src/Kobaltrix.framework/Versions/A/Kobaltrix: CXX_SHARED_LIBRARY_LINKER'
has build.ninja "build src/Kobaltrix.framework/Versions/A/Headers/Kobaltrix.h: "
has cmake_install.cmake '-id "@rpath/Kobaltrix.framework/Versions/A/Kobaltrix"'
has kobaltrix.pc '-framework Kobaltrix'
has CPackConfig.cmake 'set(CPACK_GENERATOR "TGZ")'
exit $status
