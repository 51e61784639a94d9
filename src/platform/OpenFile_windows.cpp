#include "platform/OpenFile.h"
#include "platform/Wide.h"

#include <cwchar>

// Line ends are the file's own, here as elsewhere.
std::FILE* _KXOpenFile(const char* path, const char* mode) {
    std::wstring wide = _KXWide(mode);
    if (wide.find(L'b') == std::wstring::npos)
        wide += L'b';
    return _wfopen(_KXWidePath(path).c_str(), (wide + L'N').c_str());
}
