// What two systems hand to each other: the same program, built for both, writes files that its other self
// reads, and talks with it over the network.
//
//   kobaltrix_exchange write FOLDER
//   kobaltrix_exchange read FOLDER
//   kobaltrix_exchange host FILE     # writes the port into FILE, and waits for one client
//   kobaltrix_exchange join PORT
//
// The first two write and read every kind of value. The last two end when each has heard all that it should
// have.
#include <Kobaltrix/Kobaltrix.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {
void expect(bool holds, const std::string& what) {
    if (!holds)
        throw std::runtime_error(what + ": " + KXError());
}

// ---- values

constexpr long numbers[] = {0, 1, -1, 0x12345678, INT_MAX, INT_MIN};
const float fractions[] = {0,
                           -0.0f,
                           0.1f,
                           -1e-40f, // not normal
                           std::numeric_limits<float>::max(),
                           -std::numeric_limits<float>::infinity(),
                           std::numeric_limits<float>::quiet_NaN()};
const std::string texts[] = {"plain", "two\nlines\r\n", "gr\u00fc\u00df \u65e5\u672c\u8a9e \U0001F525",
                             std::string(1000, 'x')};
constexpr KXPoint point = {-1.5f, 1e9f};
constexpr KXColor color = {0.25f, 1, 0, 0.5f};

bool isSame(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }
bool isSame(KXPoint a, KXPoint b) { return isSame(a.x, b.x) && isSame(a.y, b.y); }

void put(KXIOBuffer io) {
    for (const long number : numbers)
        KXIOPutL(number, io);
    for (const float fraction : fractions)
        KXIOPutF(fraction, io);
    for (const std::string& text : texts)
        KXIOPutString(text.c_str(), io);
    KXIOPutString(nullptr, io);
    KXIOPutPoint(point, io);
    KXIOPutColor(color, io);
}

void compare(KXIOBuffer io) {
    for (const long number : numbers)
        expect(static_cast<std::int32_t>(KXIOGetL(io)) == number, "The number " + std::to_string(number));
    for (const float fraction : fractions)
        expect(isSame(KXIOGetF(io), fraction), "The float " + std::to_string(fraction));
    for (const std::string& text : texts) {
        const char* const read = KXIOGetString(io);
        expect(read && text == read, "The text " + text);
    }
    expect(!KXIOGetString(io), "The text that is none");
    expect(isSame(KXIOGetPoint(io), point), "The point");
    const KXColor read = KXIOGetColor(io);
    expect(std::memcmp(&read, &color, sizeof color) == 0, "The colour");
    expect(KXIOIsIntact(io), "The end");
}

// ---- files

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

void write(const std::string& folder) {
    KXSaveFile values((folder + "/values \u00e9\U0001F525.bin").c_str());
    put(KXIOBufferWith(values.stream(), nullptr));
    KXPutSize({640, -480}, values.stream());
    KXPutRect({point, {640, 480}}, values.stream());
    expect(values.commit(), "Values");

    KXNetworkBuffer message;
    put(KXIOBufferWith(nullptr, &message));
    const std::unique_ptr<char, void (*)(void*)> bytes(message.buffer(), std::free);
    KXSaveFile sent((folder + "/message.bin").c_str());
    expect(std::fwrite(bytes.get(), 1, static_cast<std::size_t>(message.bufferLength()), sent.stream()) ==
                   static_cast<std::size_t>(message.bufferLength()) &&
               sent.commit(),
           "A message");

    KXSettings settings;
    settings.load((folder + "/settings.txt").c_str());
    for (std::size_t i = 0; i < std::size(texts); ++i)
        settings.setText(("text" + std::to_string(i)).c_str(), texts[i].c_str());
    settings.setNumber("tenth", 0.1f);
    settings.setNumber("third", 1.0 / 3);
    settings.setNumber("least", std::numeric_limits<double>::denorm_min());
    settings.setNumber("whole", INT_MIN);
    settings.setFlag("flag", -1);
    settings.setPoint("point", point);
    settings.setNumbers("numbers", {1e300, -0.5});
    settings.setTexts("texts", {std::begin(texts), std::end(texts)});
    expect(settings.save(), "Settings");
}

void read(const std::string& folder) {
    // Opened as a game does it that was made for one system and taken to the other: by the library.
    const std::string path = folder + "/values \u00e9\U0001F525.bin";
    expect(KXFileExists(path.c_str()), "Values are not there");
    const File values(KXOpenFile(path.c_str(), "rb"), std::fclose);
    expect(values != nullptr, "Values");
    compare(KXIOBufferWith(values.get(), nullptr));
    const KXSize size = KXGetSize(values.get());
    expect(size.width == 640 && size.height == -480, "The size");
    expect(isSame(KXGetRect(values.get()).origin, point), "The rectangle");
    expect(KXStreamIsIntact(values.get()) && std::fgetc(values.get()) == EOF, "Values end");

    const File sent(KXOpenFile((folder + "/message.bin").c_str(), "rb"), std::fclose);
    expect(sent != nullptr, "A message");
    std::vector<char> bytes(1 << 20);
    KXNetworkBuffer message(bytes.data(),
                            static_cast<int>(std::fread(bytes.data(), 1, bytes.size(), sent.get())));
    compare(KXIOBufferWith(nullptr, &message));

    KXSettings settings;
    expect(settings.load((folder + "/settings.txt").c_str()) == KXSettingsLoaded, "Settings");
    for (std::size_t i = 0; i < std::size(texts); ++i)
        expect(settings.text(("text" + std::to_string(i)).c_str(), "") == texts[i], "A text of the settings");
    expect(isSame(static_cast<float>(settings.number("tenth", 0)), 0.1f), "A tenth");
    expect(settings.number("third", 0) == 1.0 / 3, "A third");
    expect(settings.number("least", 0) == std::numeric_limits<double>::denorm_min(), "The least number");
    expect(settings.integer("whole", 0) == INT_MIN && settings.flag("flag", 0), "A whole number and a flag");
    expect(isSame(settings.point("point", {}), point), "A point of the settings");
    expect(settings.numbers("numbers") == std::vector<double>({1e300, -0.5}), "Numbers");
    expect(settings.texts("texts") == std::vector<std::string>(std::begin(texts), std::end(texts)), "Texts");
}

// ---- the network

constexpr int messages = 300;

// What both sides know that message i holds: all kinds of values, and some texts of up to a megabyte.
void fill(KXNetworkBuffer& buffer, int i) {
    put(KXIOBufferWith(nullptr, &buffer));
    const std::string text(i % 50 ? static_cast<std::size_t>(i) * 7 : 1 << 20,
                           static_cast<char>('a' + i % 26));
    buffer.appendString(text.data(), static_cast<int>(text.size()));
}

void compareMessage(KXNetworkBuffer& got, int i) {
    KXNetworkBuffer expected;
    fill(expected, i);
    const std::unique_ptr<char, void (*)(void*)> a(got.buffer(), std::free), b(expected.buffer(), std::free);
    expect(got.bufferLength() == expected.bufferLength() &&
               std::memcmp(a.get(), b.get(), static_cast<std::size_t>(expected.bufferLength())) == 0,
           "Message " + std::to_string(i));
    compare(KXIOBufferWith(nullptr, &got));
}

// Calls @a step, which tells whether it is done, for a minute at most.
template<class Step>
void poll(const char* what, Step step) {
    for (int i = 0; i < 60000; ++i) {
        if (step())
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    throw std::runtime_error(std::string(what) + " is waited for in vain.");
}

// Sends back each message that came, with another one's number.
void host(const std::string& portFile) {
    KXNetworkServer server("127.0.0.1", 0, 1, 0, 1);
    const std::unique_ptr<char, void (*)(void*)> address(server.IPAddress(), std::free);
    KXSaveFile file(portFile.c_str());
    std::fputs(std::strrchr(address.get(), ':') + 1, file.stream());
    expect(file.commit(), "The port");
    int got = 0;
    poll("The client", [&] {
        server.checkForIncomingConnections();
        server.poll();
        int client = -1;
        while (const std::unique_ptr<KXNetworkBuffer> message{server.receiveNext(&client)}) {
            compareMessage(*message, got);
            KXNetworkBuffer answer;
            fill(answer, messages - got);
            expect(server.sendBufferToClient(client, &answer) > 0, "An answer");
            ++got;
        }
        return got == messages && !server.isClientConnected(0); // who has heard everything leaves
    });
}

void join(int port) {
    KXNetworkClient client;
    client.beginConnecting("localhost", port);
    int sent = 0, got = 0;
    poll("The host", [&] {
        client.poll();
        expect(client.state() <= KXNetworkConnected, "The connection");
        if (client.connected() && sent < messages && sent <= got + 3) {
            KXNetworkBuffer message;
            fill(message, sent++);
            expect(client.send(&message) > 0, "A message");
        }
        while (const std::unique_ptr<KXNetworkBuffer> answer{client.receiveNext()})
            compareMessage(*answer, messages - got++);
        return got == messages;
    });
}
} // namespace

int main(int argc, char** argv) {
    const std::string task = argc == 3 ? argv[1] : "";
    try {
        if (task == "write")
            write(argv[2]);
        else if (task == "read")
            read(argv[2]);
        else if (task == "host")
            host(argv[2]);
        else if (task == "join")
            join(std::atoi(argv[2]));
        else
            throw std::runtime_error("usage: write FOLDER | read FOLDER | host FILE | join PORT");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
