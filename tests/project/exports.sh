#!/usr/bin/env bash
# exports.sh LIBRARY: the shared library exports what is public, and nothing else.
set -euo pipefail
# These are bases of public classes: games get to their members, if not to their names.
bases='KXUIWidget|KXUIMenuBase|KXUIMenuItem|KXUIMenuTree|KXNetworkHandler'
symbols=$(nm --dynamic --demangle --defined-only "$1" | cut -d ' ' -f 3- | sed -E "s/\b_($bases)\b/\1/g; s/\bstd::__cxx11::/std::/g")
status=0
if grep -vE '^((vtable|typeinfo|typeinfo name) for )?KX' <<<"$symbols" | grep -vE '^(_end|_edata|__bss_start)$'; then
    printf 'These are not public.\n'
    status=1
fi
if grep -E '(^|::)_' <<<"$symbols" | grep -vE '^(_end|_edata|__bss_start)$'; then
    printf 'These serve the library alone.\n'
    status=1
fi
for name in 'KXInit()' 'KXInit(char*)' KXMousePoint 'KXWindow::size()' 'KXTexture::~KXTexture()' 'KXTempString(char const*, ...)'; do
    grep -qxF "$name" <<<"$symbols" || { status=1 && printf 'Not exported: %s\n' "$name"; }
done
exit $status
