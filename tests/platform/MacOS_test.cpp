// The library with its files for macOS in the place of those of this system.

#include "net/Socket.h"
#include "platform/MacStandIns.h"
#include "platform/ProgramFile.h"
#include "support/TemporaryFolder.h"
#include "support/WindowTest.h"
#include "util/KXString.h"

#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXPlaces.h>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {
namespace fs = std::filesystem;

std::string orNone(const char* text) { return text ? text : "none"; }

struct MacOS : testing::Test {
    MacOS() {
        for (const char* variable : {"KOBALTRIX_DATA_FOLDER", "KOBALTRIX_USER_FOLDER"})
            unsetenv(variable);
        fs::create_directories(contents + "/MacOS");
        folder.write("Great Game.app/Contents/MacOS/game");
        macStandIns = {contents + "/MacOS/game"};
    }
    ~MacOS() override {
        macStandIns = {};
        _KXCleanTempStrings();
    }

    const TemporaryFolder folder;
    const std::string contents = folder / "Great Game.app/Contents";
};

TEST_F(MacOS, FilesOfAGameLieInItsBundle) {
    EXPECT_EQ(orNone(KXProgramFolder()), contents + "/MacOS");
    EXPECT_EQ(orNone(KXDataFolder()), "none");
    const std::string told = KXError(), resources = contents + "/Resources/";
    EXPECT_TRUE(told.starts_with("The game's files are not there. No folder: " + resources + "game, " +
                                 resources + "assets, " + contents + "/MacOS/assets, "))
        << told;
    for (const char* better : {"/Resources/assets", "/Resources/game"}) {
        fs::create_directories(contents + better);
        EXPECT_EQ(orNone(KXDataPath("a.png")), contents + better + "/a.png");
    }
    // Links are not part of the answer, wherever they lie.
    fs::create_directory_symlink(folder / "Great Game.app", folder / "link");
    fs::create_symlink(folder / "link/Contents/MacOS/game", folder / "alias");
    for (const char* link :
         {"alias", "link/Contents/MacOS/game", "link/../Great Game.app/Contents/MacOS/game"}) {
        macStandIns.programFile = folder / link;
        EXPECT_EQ(_KXProgramFile(), contents + "/MacOS/game");
    }
    // Outside of a bundle it is as elsewhere.
    macStandIns.programFile = folder.write("bare");
    fs::create_directory(folder / "assets");
    EXPECT_EQ(orNone(KXDataFolder()), folder / "assets");
    macStandIns.programFile = folder / "gone";
    EXPECT_EQ(orNone(KXProgramFolder()), "none");
}

TEST_F(MacOS, FilesOfThePlayerLieInTheLibrary) {
    const std::string home = orNone(std::getenv("HOME"));
    setenv("HOME", folder.path().c_str(), 1);
    EXPECT_EQ(orNone(KXUserPath("saves/1.txt")), folder / "Library/Application Support/game/saves/1.txt");
    EXPECT_TRUE(fs::is_directory(folder / "Library/Application Support/game/saves"));
    setenv("HOME", home.c_str(), 1);
}

int option(int socket, int level, int name) {
    int value = -1;
    socklen_t length = sizeof value;
    getsockopt(socket, level, name, &value, &length);
    return value;
}

// The stand-in for the option against signals is another one that nobody sets.
TEST_F(MacOS, SocketsRaiseNoSignalAndAskForThePeer) {
    const _KXSocketOwner listener(_KXOpenSocket()), client(_KXOpenSocket());
    _KXSocketAddress address;
    ASSERT_TRUE(_KXReadAddress("127.0.0.1:0", address));
    ASSERT_TRUE(_KXBind(listener.get(), address) && _KXListen(listener.get(), 1));
    ASSERT_TRUE(_KXConnect(client.get(), address));
    const _KXSocketOwner accepted(_KXAccept(listener.get(), address));
    for (const int socket : {client.get(), accepted.get()}) {
        EXPECT_EQ(option(socket, SOL_SOCKET, SO_OOBINLINE), 1);
        _KXKeepAlive(socket, 42);
        EXPECT_EQ(option(socket, IPPROTO_TCP, TCP_KEEPIDLE), 42);
    }
    EXPECT_EQ(_KXSendBytes(client.get(), "abc", 3), 3);
    char bytes[4] = "";
    EXPECT_EQ(_KXReceiveBytes(accepted.get(), bytes, 3), 3);
    EXPECT_STREQ(bytes, "abc");
}
} // namespace

struct MacOSWindow : WindowTest {};

TEST_F(MacOSWindow, WaitsForTheDisplayFromItsBeginning) {
    EXPECT_EQ(macStandIns.swapInterval, 1);
    EXPECT_EQ(window->setVerticalSync(KXVerticalSyncOff), -1);
    EXPECT_EQ(macStandIns.swapInterval, 0);
    EXPECT_EQ(window->verticalSync(), KXVerticalSyncOff);
    EXPECT_EQ(window->setVerticalSync(KXVerticalSyncAdaptive), 0) << "which macOS has not";
    EXPECT_EQ(window->setVerticalSync(KXVerticalSyncOn), -1);
    EXPECT_EQ(window->verticalSync(), KXVerticalSyncOn);
    macStandIns.hasContext = false;
    EXPECT_EQ(window->setVerticalSync(KXVerticalSyncOff), 0);
    EXPECT_EQ(window->verticalSync(), KXVerticalSyncOff);
    EXPECT_EQ(macStandIns.swapInterval, 1);
    macStandIns = {};
}
