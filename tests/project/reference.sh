#!/usr/bin/env bash
# reference.sh PROJECT FOLDER: makes the site of the pages and of the reference in FOLDER; no link of it is broken, and
# nothing public is undocumented.
set -euo pipefail
cd "$1"
folder=$2
rm -rf -- "$folder"
mkdir -p -- "$folder/bad"
site=$folder/site
scripts/site "$site"

for page in KXCore_8h classKXWindow class__KXUIWidget classKXTestUser; do
    [[ -s $site/reference/$page.html ]] || { printf 'No page %s\n' "$page" && exit 1; }
done
for header in include/Kobaltrix/KX*.h; do
    grep -q ">${header##*/}<" "$site/reference/index.html" || { printf 'The first page lacks %s\n' "$header" && exit 1; }
done
# What serves the library itself stays out.
if grep -rlE '_commonInit|_idealSizeForText|_readPixels' "$site/reference"; then exit 1; fi
# Pages lead to pages, sources are pages, and both are found.
if grep -rnE --include='*.html' --exclude-dir=reference 'href="[^":]*\.(md|cpp|h)["#]' "$site"; then exit 1; fi
for place in '"index.html#two-commands"' '"docs/text.html#sharp-text"' '"reference/classKXWindow.html"'; do
    grep -q "$place" "$site/search-index.js" || { printf 'The search misses %s\n' "$place" && exit 1; }
done
[[ -s $site/examples/01_window.cpp.html && -s $site/examples/index.html ]]

# What is broken is named.
rm "$site/docs/demo.png"
sed -i 's/id="sharp-text"/id="blunt-text"/' "$site/docs/text.html"
sed -i '0,/<\/p>/s///' "$site/docs/sound.html"
if scripts/site --check "$site" >"$folder/told" 2>&1; then printf 'Nothing was noticed.\n' && exit 1; fi
for fault in 'index.html: docs/demo.png leads nowhere' 'text.html#sharp-text leads nowhere' 'docs/sound.html: <p> is not closed'; do
    grep -q "$fault" "$folder/told" || { printf 'Not noticed: %s\n' "$fault" && exit 1; }
done

# A function without a word said about it does not pass.
printf '/// @file\n/// Bad.\nvoid KXBad(int a);\n' >"$folder/bad/bad.h"
if { cat docs/Doxyfile && printf 'OUTPUT_DIRECTORY = "%s"\nINPUT = "%s/bad"\n' "$folder/bad" "$folder"; } | doxygen - >/dev/null 2>&1; then
    printf 'An undocumented function was let through.\n'
    exit 1
fi
