// Files that are saved whole or not at all, where there are links, pipes and rights.

#include "SaveFileTest.h"
#include "support/Denied.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {
using SaveFileLinks = SaveFileTest;

TEST_F(SaveFileLinks, TakesThePlaceOfWhatIsThere) {
    fs::permissions(old, fs::perms(0640));
    fs::create_symlink("old", folder / "link");
    fs::create_symlink(folder / "link", folder / "second");
    fs::create_symlink("nothing yet", folder / "ahead");
    for (const auto& [name, target, mode] : {std::tuple{"old", "old", 0640},
                                             {"link", "old", 0640},
                                             {"second", "old", 0640},
                                             {"new", "new", 0604},
                                             {"ahead", "nothing yet", 0604}}) {
        const mode_t mask = umask(0062);
        EXPECT_EQ(save(folder / name, std::string("\0of ", 4) + name), "");
        umask(mask);
        EXPECT_EQ(contentOf(folder / target), std::string("\0of ", 4) + name);
        EXPECT_EQ(static_cast<int>(fs::status(folder / target).permissions()), mode) << name;
    }
    EXPECT_TRUE(fs::is_symlink(folder / "link") && fs::is_symlink(folder / "ahead"));
    EXPECT_EQ(entries(), 6);
    fs::current_path(folder.path());
    EXPECT_EQ(save("old", ""), "");
    EXPECT_EQ(fs::file_size(old), 0u);
}

TEST_F(SaveFileLinks, OrLeavesItWhenItFails) {
    fs::create_symlink("round", folder / "round");
    fs::create_directory(folder / "closed");
    fs::copy(old, folder / "closed/old");
    const std::string locked = folder.write("locked", "as it was"), large(100000, 'x');
    fs::permissions(locked, fs::perms(0444));
    fs::permissions(folder.path(), fs::perms(0777)); // files may be made here by anybody
    const std::ptrdiff_t before = entries();
    const auto onFullDisk = [&](const std::string& path) {
        const FullDisk full(50000);
        return save(path, large);
    };
    const auto withoutRights = [&](const std::string& path) {
        const Unprivileged nobody;
        return save(path);
    };
    const auto plainly = [&](const std::string& path) { return save(path); };
    const std::tuple<std::string, std::string, std::function<std::string(const std::string&)>> rows[] = {
        {old, "File too large", onFullDisk},
        {folder / "new", "File too large", onFullDisk},
        {locked, "Permission denied", withoutRights},
        {folder / "closed/old", "Permission denied", withoutRights},
        {folder / "closed/new", "Permission denied", withoutRights},
        {folder / "round", "Too many levels of symbolic links", plainly},
        {"/dev/full", "No space left on device", plainly},
    };
    for (const auto& [path, reason, attempt] : rows)
        EXPECT_EQ(attempt(path), reason) << path;
    for (const char* path : {"old", "locked", "closed/old"})
        EXPECT_EQ(contentOf(folder / path), "as it was") << path;
    EXPECT_EQ(entries(), before);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(SaveFileLinks, AProcessThatIsKilledMeanwhileLeavesTheOldOne) {
    const pid_t child = fork();
    if (child == 0) {
        const FullDisk full(50000);
        std::signal(SIGXFSZ, SIG_DFL); // kills it in the middle
        save(old, std::string(100000, 'x'));
        _exit(1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(contentOf(old), "as it was");
}

TEST_F(SaveFileLinks, TouchesNothingElse) {
    for (int i = 0; i < 50; ++i) // a guess at the name beside it
        fs::create_symlink("victim",
                           folder / (".saving-" + std::to_string(getpid()) + '-' + std::to_string(i)));
    folder.write("victim");
    EXPECT_EQ(save(old), "");
    EXPECT_EQ(contentOf(folder / "victim"), "content");
    EXPECT_EQ(entries(), 52);

    const std::string pipe = folder / "pipe";
    mkfifo(pipe.c_str(), 0600);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(save(pipe, "through"), "");
    char text[8] = {};
    EXPECT_EQ(read(reader, text, sizeof text), 7);
    close(reader);
    EXPECT_TRUE(fs::is_fifo(pipe));

    const int output = dup(STDOUT_FILENO), file = open(old.c_str(), O_WRONLY);
    dup2(file, STDOUT_FILENO);
    struct stat before = {}, after = {};
    stat(old.c_str(), &before);
    const std::string error = save("/dev/stdout", "out");
    dup2(output, STDOUT_FILENO);
    stat(old.c_str(), &after);
    EXPECT_EQ(error, "");
    EXPECT_EQ(contentOf(old), "out");
    EXPECT_EQ(before.st_ino, after.st_ino) << "what the process writes to was replaced under its hands";
    close(file);
    close(output);
}
} // namespace
