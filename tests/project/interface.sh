#!/usr/bin/env bash
# interface.sh PROJECT LIBRARY FOLDER: games that were built with the last release still run with this library, and what
# would stop them is noticed.
set -euo pipefail
project=$1 library=$2 folder=$3
"$project/scripts/interface" "$library" || exit

rm -rf -- "$folder"
mkdir -p -- "$folder"
cp -R "$project/include" "$project/packaging" "$folder"
mkdir "$folder/scripts"
cp "$project/scripts/interface" "$folder/scripts"
cd "$folder"
# change HEADER OLD NEW: in a public header, once.
change() {
    [[ $(grep -c -- "$2" "include/Kobaltrix/$1") == 1 ]] || { printf '%s: not once in %s\n' "$2" "$1" && exit 1; }
    sed -i "s|$2|$3|" "include/Kobaltrix/$1"
}
change KXTypes.h 'KXAliasModePolygon = 1' 'KXAliasModePolygon = 3'
change KXPointMath.h 'float KXAngle(' 'double KXAngle('
change KXAudio.h ' int chunkSize = 1024;' ' double chunkSize = 1024;'
change KXUIWidget.h '    virtual void setOrigin(' '    virtual void fade(); virtual void setOrigin('
# What is added does no harm.
change KXAudio.h '^struct KXAudioOptions' 'enum KXAdded { KXAddedOne }; struct KXWings { int count; }; KX_API int KXFly(KXWings wings); &'
printf ' _Z7KXGladev@Base 0.1.0\n' >>packaging/symbols
if scripts/interface "$library" include >told; then printf 'Nothing was noticed.\n' && exit 1; fi
grep -v '^ \|^$\|^Games\|^the new' told | LC_ALL=C sort >noticed
diff -u - noticed <<'END' || exit
KXAliasModePolygon
KXAngle(KXPoint)
KXAudioOptions
KXAudioOptions::chunkSize
KXGlade()
_KXUIWidget, virtual functions
END

# After a change of soname there is nothing to hold to, until the lists are made anew.
sed -i '1s/\.so\.[0-9.]*/.so.0.0/' packaging/symbols
if scripts/interface "$library" >told || ! grep -q -- '--release' told; then printf 'An old soname: %s\n' "$(<told)" && exit 1; fi
