#include <Kobaltrix/KXSaveFile.h>

#include "core/ground/ErrorSlot.h"
#include "platform/FileFacts.h"
#include "platform/FilePath.h"
#include "platform/MemoryStream.h"
#include "platform/RenameFile.h"
#include "util/KXString.h"
#include "util/WholeFile.h"

#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

struct KXSaveFile::State {
    explicit State(const char* where) : path(where ? where : "") {
        if (!content.get())
            throw std::bad_alloc();
    }

    std::string path;
    _KXMemoryStream content;
};

KXSaveFile::KXSaveFile(const char* path) : _state(std::make_unique<State>(path)) {}

KXSaveFile::~KXSaveFile() = default;

FILE* KXSaveFile::stream() const { return _state->content.get(); }

int KXSaveFile::commit() {
    const std::optional<std::string_view> content = _state->content.finish();
    if (content)
        return _KXReplaceFile(_state->path.c_str(), *content) ? -1 : 0;
    _KXReportError("%s: cannot be written: not all of it was put on the stream", _state->path.c_str());
    return 0;
}

// No other file has it. Empty if there are too many.
static std::string nameAside(const std::string& path) {
    constexpr int most = 1000; // more than anybody looks at
    for (int number = 1; number <= most; ++number) {
        const std::string name = path + ".broken" + (number > 1 ? '-' + std::to_string(number) : "");
        if (!_KXNameIsTaken(name.c_str()))
            return name;
    }
    return {};
}

const char* KXPutFileAside(const char* path) {
    const std::string from = path ? path : "", to = nameAside(from);
    const char* const aside = _KXKeepTemporarily(to);
    if (!aside) // null would say that it is where it was
        throw std::bad_alloc();
    std::error_code error = *aside ? _KXPathFault(from) : std::make_error_code(std::errc::file_exists);
    if (!error)
        error = _KXRenameFile(from, to);
    if (error)
        _KXReportError("%s: cannot be put aside: %s", from.c_str(), error.message().c_str());
    return error ? nullptr : aside;
}
