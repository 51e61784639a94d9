#!/usr/bin/env bash
# headers_alone.sh COMPILER PROJECT: every public header compiles alone and without a warning, all of them as new C++, too.
set -euo pipefail
compiler=$1
cd "$2"
status=0
# compiles STANDARD HEADER: twice, since a header may also be included twice.
compiles() {
    printf '#include <%s>\n' "$2" "$2" |
        "$compiler" -std="$1" -Iinclude -Itestkit -x c++ -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion \
            -Wnon-virtual-dtor -Wold-style-cast -Werror - || { status=1 && printf '%s: %s\n' "$1" "$2"; }
}
for header in {include/Kobaltrix,testkit/KobaltrixTest}/*.h; do compiles c++11 "${header#*/}"; done
for header in Kobaltrix/Kobaltrix.h KobaltrixTest/KobaltrixTest.h; do compiles c++20 "$header"; done
# What serves the library alone is out of reach for those who link the shared one, and compiles no less.
reaches() {
    printf '#include <Kobaltrix/Kobaltrix.h>\nint use(KXNetworkClient& client) { return client.%s; }\n' "$1" |
        "$compiler" -std=c++11 -Iinclude -x c++ -fsyntax-only -DKX_SHARED_LIBRARY - 2>/dev/null
}
if ! reaches 'send(nullptr)' || reaches '_send(nullptr, 0)'; then status=1 && printf 'KX_LIBRARY_ONLY\n'; fi
# The umbrella holds every header.
for folder in include/Kobaltrix testkit/KobaltrixTest; do
    name=${folder#*/}
    for header in "$folder"/KX*.h; do
        grep -q "#include <$name/${header##*/}>" "$folder/$name.h" || { status=1 && printf '%s.h lacks %s\n' "$name" "$header"; }
    done
done
# No header brings in those of the platform.
if grep -nE '#include *[<"](SDL|GL/|OpenGL/|FTGL)' {include/Kobaltrix,testkit/KobaltrixTest}/*.h; then status=1; fi
# A system's header has macros of these names.
if grep -nE '>::(min|max)\(' {include/Kobaltrix,testkit/KobaltrixTest}/*.h; then status=1; fi
exit $status
