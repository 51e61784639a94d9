#include <Kobaltrix/KXSaveFile.h>

#include "core/ground/ErrorSlot.h"
#include "platform/MemoryStream.h"
#include "util/WholeFile.h"

#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

struct KXSaveFile::State {
    explicit State(const char* where) : path(where ? where : "") {
        if (!stream)
            throw std::bad_alloc();
    }
    ~State() {
        if (stream)
            std::fclose(stream);
        std::free(content);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    /// What was put on the stream, which ends here. None if it is not all there.
    std::optional<std::string_view> finish() {
        FILE* const open = std::exchange(stream, nullptr);
        if (!open)
            return std::nullopt;
        const bool failed = std::ferror(open) != 0;
        return std::fclose(open) == 0 && !failed ? std::optional<std::string_view>({content, size})
                                                 : std::nullopt;
    }

    std::string path;
    char* content = nullptr;
    std::size_t size = 0;
    FILE* stream = _KXOpenMemory(&content, &size);
};

KXSaveFile::KXSaveFile(const char* path) : _state(std::make_unique<State>(path)) {}

KXSaveFile::~KXSaveFile() = default;

FILE* KXSaveFile::stream() const { return _state->stream; }

int KXSaveFile::commit() {
    const std::optional<std::string_view> content = _state->finish();
    if (content)
        return _KXReplaceFile(_state->path.c_str(), *content) ? -1 : 0;
    _KXReportError("%s: cannot be written: not all of it was put on the stream", _state->path.c_str());
    return 0;
}
