#include "support/System.h"

#include "platform/Wide.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <io.h>
#include <malloc.h>
#include <windows.h>

void setVariable(const char* name, const std::string& value) {
    _wputenv_s(_KXWide(name).c_str(), _KXWide(value).c_str());
}
void unsetVariable(const char* name) { setVariable(name, ""); }

const char* const videoDriverOfTests = "windows"; // SDL has no OpenGL without a display here

long openFiles() {
    long count = 0;
    DWORD flags = 0;
    for (std::uintptr_t handle = 4; handle < 0x4000; handle += 4) // Wine does not count them itself
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != 0;
    return count;
}

bool isInherited(int descriptor) {
    DWORD flags = 0;
    GetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)), &flags);
    return flags & HANDLE_FLAG_INHERIT;
}

void setTimeZone(const char* zone) {
    setVariable("TZ", zone);
    _tzset();
}

std::size_t memoryInUse() {
    std::size_t bytes = 0;
    for (_HEAPINFO block = {}; _heapwalk(&block) == _HEAPOK;)
        bytes += block._useflag == _USEDENTRY ? block._size : 0;
    return bytes;
}

namespace {

/// A command as a shell of other systems reads it.
struct Command {
    std::map<std::string, std::string> variables;
    std::vector<std::string> words; ///< The program and its arguments.
    std::string file;               ///< Where its output goes, if not to the test.

    explicit Command(const std::string& text) {
        std::string word;
        char quote = 0;
        bool began = false, isForFile = false;
        for (const char c : text + ' ') {
            if (quote ? c == quote : c == '\'' || c == '"') {
                quote = quote ? '\0' : c;
                began = true;
            } else if (quote || c != ' ') {
                word += c;
                began = true;
            } else if (began) {
                take(word, isForFile);
                word.clear();
                began = false;
            }
        }
    }

private:
    void take(const std::string& word, bool& isForFile) {
        const std::size_t equals = word.find('=');
        if (isForFile)
            file = word;
        else if (words.empty() && equals != word.npos)
            variables[word.substr(0, equals)] = word.substr(equals + 1);
        else if (word != ">")
            words.push_back(word);
        isForFile = word == ">";
    }
};

/// So that the program's runtime takes it apart into the same words.
std::wstring lineOf(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += line.empty() ? "\"" : " \"";
        std::size_t slashes = 0;
        for (const char c : word) {
            if (c == '"')
                line.append(slashes + 1, '\\');
            slashes = c == '\\' ? slashes + 1 : 0;
            line += c;
        }
        line.append(slashes, '\\') += '"';
    }
    return _KXWide(line);
}

/// Variables for programs that are started while it lives.
class Variables {
public:
    explicit Variables(const std::map<std::string, std::string>& values) {
        for (const auto& [name, value] : values) {
            std::wstring before(32767, L'\0');
            before.resize(GetEnvironmentVariableW(_KXWide(name).c_str(), before.data(),
                                                  static_cast<DWORD>(before.size())));
            _before[name] = before;
            SetEnvironmentVariableW(_KXWide(name).c_str(), _KXWide(value).c_str());
        }
    }
    ~Variables() {
        for (const auto& [name, value] : _before)
            SetEnvironmentVariableW(_KXWide(name).c_str(), value.empty() ? nullptr : value.c_str());
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

private:
    std::map<std::string, std::wstring> _before;
};

} // namespace

struct RunningProgram {
    HANDLE process, pipe;
};

RunningProgram* startProgram(const std::string& folder, const std::string& text) {
    const Command command(text);
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE read = nullptr, write = nullptr;
    EXPECT_TRUE(CreatePipe(&read, &write, &inherited, 0));
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
    HANDLE output = write;
    if (!command.file.empty())
        output = CreateFileW(_KXWidePath(folder + "/" + command.file).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                             &inherited, CREATE_ALWAYS, 0, nullptr);

    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output;
    start.hStdError = write;
    PROCESS_INFORMATION started = {};
    const Variables variables(command.variables);
    std::wstring line = lineOf(command.words);
    EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                               _KXWide(folder).c_str(), &start, &started))
        << text << ": " << GetLastError();
    if (output != write)
        CloseHandle(output);
    CloseHandle(write);
    CloseHandle(started.hThread);
    return new RunningProgram{started.hProcess, read};
}

int endOfProgram(RunningProgram* program, std::string& output) {
    std::array<char, 4096> part;
    DWORD count = 0;
    while (ReadFile(program->pipe, part.data(), static_cast<DWORD>(part.size()), &count, nullptr) && count)
        output.append(part.data(), count);
    std::erase(output, '\r'); // lines end as elsewhere
    WaitForSingleObject(program->process, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(program->process, &status);
    CloseHandle(program->process);
    CloseHandle(program->pipe);
    delete program;
    return status < 256 ? static_cast<int>(status) : -1;
}
