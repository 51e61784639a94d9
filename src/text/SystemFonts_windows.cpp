#include "text/SystemFonts.h"

#include "platform/Wide.h"

#include <fontconfig/fontconfig.h>

#include <cstring>

#include <windows.h>

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

// fontconfig reads folders with calls that know no UTF-8.
std::string _KXFontPath(const char* path) {
    const int length = static_cast<int>(std::strlen(path));
    std::wstring wide(path, path + length); // no character takes more there
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, path, length, wide.data(), length)));
    return _KXNarrowPath(wide);
}
