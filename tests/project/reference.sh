#!/usr/bin/env bash
# reference.sh PROJECT FOLDER: makes the reference of the public headers in FOLDER; nothing public is undocumented.
set -euo pipefail
cd "$1"
folder=$2
rm -rf -- "$folder"
mkdir -p -- "$folder/bad"
make_reference() { { cat docs/Doxyfile && printf 'OUTPUT_DIRECTORY = "%s"\n%s\n' "$folder" "$1"; } | doxygen -; }

make_reference ''
for page in KXCore_8h classKXWindow class__KXUIWidget classKXTestUser; do
    [[ -s $folder/reference/$page.html ]] || { printf 'No page %s\n' "$page" && exit 1; }
done
# What serves the library itself stays out.
if grep -rlE '_commonInit|_idealSizeForText|_readPixels' "$folder/reference"; then exit 1; fi

# A function without a word said about it does not pass.
printf '/// @file\n/// Bad.\nvoid KXBad(int a);\n' >"$folder/bad/bad.h"
if make_reference "INPUT = \"$folder/bad\"" >/dev/null 2>&1; then
    printf 'An undocumented function was let through.\n'
    exit 1
fi
