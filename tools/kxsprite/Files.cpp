#include "Files.h"

#include "Document.h"
#include "Paths.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXFile.h>

#include <SDL_image.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace {
// A device that never ends must not fill the memory.
constexpr std::size_t largestFile = std::size_t{256} << 20;

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};
struct FreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
} // namespace

std::string readFile(const std::string& path) {
    const std::unique_ptr<FILE, CloseFile> file(KXOpenFile(path.c_str(), "rb"));
    if (!file)
        throw Fault(std::string("cannot be opened: ") + std::strerror(errno));
    std::string bytes;
    char block[16384];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
        bytes.append(block, count);
        if (bytes.size() > largestFile)
            throw Fault("is larger than 256 MiB");
    }
    if (std::ferror(file.get()))
        throw Fault(std::string("cannot be read: ") + std::strerror(errno));
    return bytes;
}

Fault libraryFault(const std::string& path) {
    const std::string reason = KXError(), beginning = path + ": "; // which the report says itself
    return {reason.starts_with(beginning) ? reason.substr(beginning.size()) : reason, path};
}

std::string sheetBeside(const std::string& sprite, const std::string& texture) {
    // The library hands the name to the system after the folder, so a leading slash does not start anew.
    return textOf(std::filesystem::absolute(pathOf(sprite)).parent_path() / "") + texture;
}

std::optional<SheetSize> sheetSize(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(pathOf(path), ignored))
        return std::nullopt;
    const std::unique_ptr<SDL_Surface, FreeSurface> surface(IMG_Load(path.c_str()));
    if (!surface)
        throw Fault("the sheet " + quoted(path) + " is no image that can be read: " + SDL_GetError());
    return SheetSize{surface->w, surface->h};
}
