#include "text/SystemFonts.h"

#include <fontconfig/fontconfig.h>

// On Windows nobody has settings for fontconfig: these are the game's. Names in capitals are fontconfig's
// own.
static const char settings[] = R"(<?xml version="1.0"?>
<fontconfig>
  <dir>WINDOWSFONTDIR</dir>
  <dir>WINDOWSUSERFONTDIR</dir>
  <cachedir>LOCAL_APPDATA_FONTCONFIG_CACHE</cachedir>
  <alias><family>sans</family><prefer><family>sans-serif</family></prefer></alias>
  <alias>
    <family>sans-serif</family>
    <prefer><family>Segoe UI</family><family>Tahoma</family><family>Arial</family><family>DejaVu Sans</family></prefer>
  </alias>
  <alias>
    <family>serif</family>
    <prefer><family>Times New Roman</family><family>Georgia</family><family>DejaVu Serif</family></prefer>
  </alias>
  <alias>
    <family>monospace</family>
    <prefer><family>Consolas</family><family>Courier New</family><family>DejaVu Sans Mono</family></prefer>
  </alias>
</fontconfig>
)";

static bool load() {
    FcConfig* const config = FcConfigCreate();
    if (!config)
        return false;
    const auto* const text = reinterpret_cast<const FcChar8*>(settings);
    const bool loaded = FcConfigParseAndLoadFromMemory(config, text, FcTrue) && FcConfigSetCurrent(config);
    FcConfigDestroy(config);
    return loaded;
}

void _KXLoadSystemFonts() {
    static const bool loaded = load();
    static_cast<void>(loaded);
}
