#include "platform/Terminal.h"

#include <windows.h>

#include <cstdio>

static bool leadsNowhere(DWORD stream) { return GetFileType(GetStdHandle(stream)) == FILE_TYPE_UNKNOWN; }

void _KXUseTerminal() {
    const bool output = leadsNowhere(STD_OUTPUT_HANDLE), errors = leadsNowhere(STD_ERROR_HANDLE);
    if ((!output && !errors) || !AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    if (output)
        std::freopen("CONOUT$", "w", stdout);
    if (errors && std::freopen("CONOUT$", "w", stderr))
        std::setvbuf(stderr, nullptr, _IONBF, 0);
}
