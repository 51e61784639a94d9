#include <Kobaltrix/KXPlaces.h>

#include "core/ground/ErrorSlot.h"
#include "core/ground/HeapGlobal.h"
#include "platform/Environment.h"
#include "platform/FilePath.h"
#include "platform/ProgramFile.h"
#include "platform/UserFolder.h"
#include "util/KXString.h"
#include "util/WholeFile.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {
struct GivenNames {
    std::string maker, name;
};
} // namespace

static constinit _KXHeapGlobal<GivenNames> given;

static const char* handOut(const fs::path& path) {
    const char* const text = _KXKeepTemporarily(_KXTextOf(path));
    if (!text) // null would say something else
        throw std::bad_alloc();
    return text;
}

static fs::path forCalls(const fs::path& plain) { return _KXFilePath(_KXTextOf(plain)); }

static bool canNameFolder(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && !_KXPathFault(name) &&
           !_KXPlainPath(name).has_root_path() && std::ranges::none_of(name, [](char byte) {
               return _KXIsSlash(byte) || static_cast<unsigned char>(byte) < ' ' || byte == 0x7F;
           });
}

// The folder in the environment; empty for none.
static fs::path folderIn(const char* variable) {
    const std::string folder = _KXEnvironment(variable).value_or("");
    return folder.empty() ? fs::path() : fs::absolute(_KXPlainPath(folder));
}

static fs::path programFile() {
    const std::string file = _KXProgramFile();
    if (file.empty())
        _KXReportError("The system does not tell where the program lies");
    return _KXPlainPath(file);
}

// Empty, with a text in the error slot, if there is none.
static std::string gameName() {
    if (!given.get().name.empty())
        return given.get().name;
    const fs::path file = programFile();
    return _KXTextOf(file.extension() == ".exe" ? file.stem() : file.filename());
}

// Where the game's data may lie, the first place first.
static std::vector<fs::path> dataFolders() {
    if (const fs::path wanted = folderIn("KOBALTRIX_DATA_FOLDER"); !wanted.empty())
        return {wanted};
    const fs::path program = programFile().parent_path(), above = program.parent_path();
    if (program.empty())
        return {};
    const fs::path name = _KXPlainPath(gameName());
    std::vector<fs::path> folders;
    if (program.filename() == "MacOS" && above.filename() == "Contents")
        folders = {above / "Resources" / name, above / "Resources/assets"};
    folders.insert(folders.end(), {program / "assets", above / "share" / name, above / "share/games" / name});
    return folders;
}

// Empty, with a text in the error slot, if there is none.
static fs::path dataFolder() {
    std::string none;
    for (const fs::path& folder : dataFolders()) {
        std::error_code error;
        if (fs::is_directory(forCalls(folder), error))
            return folder;
        none += (none.empty() ? "" : ", ") + _KXTextOf(folder);
    }
    if (!none.empty())
        _KXReportError("The game's files are not there. No folder: %s", none.c_str());
    return {};
}

static bool make(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(forCalls(folder), error);
    if (error)
        _KXReportError("%s: cannot be made: %s", _KXTextOf(folder).c_str(), error.message().c_str());
    return !error;
}

static fs::path wantedUserFolder() {
    if (fs::path wanted = folderIn("KOBALTRIX_USER_FOLDER"); !wanted.empty())
        return wanted;
    const fs::path root = _KXPlainPath(_KXUserDataRoot()), name = _KXPlainPath(gameName());
    if (root.empty())
        _KXReportError("The system does not tell where the user keeps files: HOME is not set");
    if (root.empty() || name.empty())
        return {};
    return given.get().maker.empty() ? root / name : root / _KXPlainPath(given.get().maker) / name;
}

// Made if it is missing. Empty, with a text in the error slot, if it cannot be had.
static fs::path userFolder() {
    fs::path folder = wantedUserFolder();
    std::error_code ignored;
    const bool isNew = !fs::exists(forCalls(folder), ignored);
    if (folder.empty() || !make(folder))
        return {};
    if (isNew)
        fs::permissions(forCalls(folder), fs::perms::owner_all, ignored);
    return folder;
}

// False, with a text in the error slot, for a name that leads out of a folder.
static bool staysInside(const char* name) {
    const fs::path path = _KXPlainPath(name ? name : "");
    const std::string fault = _KXPathFaultText(name);
    const bool stays = !path.empty() && !path.has_root_path() && fault.empty() &&
                       std::ranges::find(path, "..") == path.end();
    if (!stays)
        _KXReportError("\"%s\" names no file in a folder of the game%s", name ? name : "", fault.c_str());
    return stays;
}

int KXSetGameName(const char* maker, const char* name) {
    const std::string_view around = maker ? maker : "", own = name ? name : "";
    if (!canNameFolder(own) || (!around.empty() && !canNameFolder(around))) {
        _KXReportError("\"%s\" cannot be the name of a folder", canNameFolder(own) ? maker : own.data());
        return 0;
    }
    GivenNames names = {std::string(around), std::string(own)};
    std::swap(given.get(), names);
    return -1;
}

const char* KXProgramFolder() {
    const fs::path file = programFile();
    return file.empty() ? nullptr : handOut(file.parent_path());
}

const char* KXDataFolder() {
    const fs::path folder = dataFolder();
    return folder.empty() ? nullptr : handOut(folder);
}

const char* KXDataPath(const char* name) {
    const fs::path folder = staysInside(name) ? dataFolder() : fs::path();
    return folder.empty() ? nullptr : handOut(folder / _KXPlainPath(name));
}

const char* KXUserFolder() {
    const fs::path folder = userFolder();
    return folder.empty() ? nullptr : handOut(folder);
}

const char* KXUserPath(const char* name) {
    const fs::path folder = staysInside(name) ? userFolder() : fs::path();
    if (folder.empty())
        return nullptr;
    const fs::path path = folder / _KXPlainPath(name);
    return make(path.parent_path()) ? handOut(path) : nullptr;
}
