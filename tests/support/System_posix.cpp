#include "support/System.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <malloc.h>
#include <sys/wait.h>

void setVariable(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
void unsetVariable(const char* name) { unsetenv(name); }

const char* const videoDriverOfTests = "offscreen";

long openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

bool isInherited(int descriptor) { return !(fcntl(descriptor, F_GETFD) & FD_CLOEXEC); }

void setTimeZone(const char* zone) {
    setVariable("TZ", zone);
    tzset();
}

std::size_t memoryInUse() { return mallinfo2().uordblks; }

struct RunningProgram {
    std::FILE* pipe;
};

RunningProgram* startProgram(const std::string& folder, const std::string& command) {
    return new RunningProgram{popen(("cd '" + folder + "' && " + command + " 2>&1").c_str(), "r")};
}

int endOfProgram(RunningProgram* program, std::string& output) {
    std::array<char, 4096> part;
    while (const std::size_t count = fread(part.data(), 1, part.size(), program->pipe))
        output.append(part.data(), count);
    const int status = pclose(program->pipe);
    delete program;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
