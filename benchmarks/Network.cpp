#include "Parts.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {
constexpr int markerLength = 7;
constexpr std::size_t piece = 1024; // in which the library sends and receives

void check(bool success, const char* what) {
    if (!success)
        throw std::runtime_error(what);
}

/// Runs something in a process of its own for as long as this lives.
class Process {
public:
    explicit Process(const std::function<void()>& run) : _id(fork()) {
        if (_id != 0)
            return;
        run();
        _exit(0);
    }
    ~Process() { waitpid(_id, nullptr, 0); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

private:
    pid_t _id;
};

/// Tells another process that something is done.
class Signal {
public:
    Signal() { check(pipe2(_ends, O_NONBLOCK) == 0, "no pipe"); }
    ~Signal() {
        close(_ends[0]);
        close(_ends[1]);
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void give() { check(write(_ends[1], "", 1) == 1, "cannot signal"); }
    bool came() {
        char byte;
        return read(_ends[0], &byte, 1) == 1;
    }

private:
    int _ends[2];
};

/// A server on a free port and its one client.
class Line {
public:
    Line() : _server("127.0.0.1", 0, 1, 0, 1) {}

    KXNetworkServer& server() { return _server; }
    /// For the process that sends.
    void connect(KXNetworkClient& client) {
        check(client.connect("127.0.0.1", _port), "the client cannot connect");
    }
    void accept() {
        while (_server.checkForIncomingConnections() < 0) {
        }
    }
    void learnPort() {
        char* const address = _server.IPAddress();
        _port = std::atoi(std::string(address).substr(std::string(address).find(':') + 1).c_str());
        std::free(address);
    }

private:
    KXNetworkServer _server;
    int _port = 0;
};

/// What a sender does: with the end of the connection messages that wait would be lost.
void sendAll(Line& line, int messages, const std::string& message, Signal* sent) {
    KXNetworkClient client;
    line.connect(client);
    for (int i = 0; i < messages; ++i) {
        KXNetworkBuffer buffer(message.data(), static_cast<int>(message.size()));
        client.send(&buffer);
    }
    if (sent)
        sent->give();
    while (client.connected()) {
        usleep(1000);
        client.receive();
    }
}

void receiveAll(KXNetworkServer& server, int messages) {
    while (messages > 0) {
        const std::unique_ptr<KXNetworkBuffer> message(server.receiveBufferFromClient(0));
        messages -= message != nullptr;
        check(message || server.isClientConnected(0), "the connection broke");
    }
}

void transfer(int messages, std::size_t size) {
    Line line;
    line.learnPort();
    const std::string message(size, 'm');
    const Process sender([&] { sendAll(line, messages, message, nullptr); });
    line.accept();
    receiveAll(line.server(), messages);
    line.server().disconnectAllClients();
}

/// The same bytes in the same pieces, by the system's calls alone.
void transferBare(int messages, std::size_t size) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    check(bind(listener, reinterpret_cast<sockaddr*>(&address), length) == 0 && listen(listener, 1) == 0 &&
              getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length) == 0,
          "no socket to listen at");
    const std::string bytes(size + markerLength, 'm');
    const Process sender([&] {
        const int out = socket(AF_INET, SOCK_STREAM, 0);
        const int on = 1;
        setsockopt(out, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        check(connect(out, reinterpret_cast<sockaddr*>(&address), length) == 0, "cannot connect");
        for (int i = 0; i < messages; ++i)
            for (std::size_t sent = 0; sent < bytes.size();) {
                const std::size_t part = std::min(bytes.size() - sent, piece);
                const ssize_t taken = send(out, bytes.data() + sent, part, 0);
                check(taken > 0, "cannot send");
                sent += static_cast<std::size_t>(taken);
            }
        close(out);
    });
    const int in = accept(listener, nullptr, nullptr);
    std::vector<char> store(piece);
    while (recv(in, store.data(), store.size(), 0) > 0) {
    }
    close(in);
    close(listener);
}

/// Nanoseconds that a server takes to hand out so many messages that have all arrived.
double drain(int messages) {
    Line line;
    line.learnPort();
    const std::string message(16, 'm');
    Signal sent;
    const Process sender([&] { sendAll(line, messages, message, &sent); });
    line.accept();
    int received = 0;
    while (!sent.came()) { // each call takes in all that has come and hands out one message
        receiveAll(line.server(), 1);
        ++received;
        usleep(1000);
    }
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    receiveAll(line.server(), messages - received);
    const double time = std::chrono::duration<double, std::nano>(Clock::now() - start).count();
    line.server().disconnectAllClients();
    return time;
}
} // namespace

void benchNetwork(Table& table) {
    table.setRuns(3);
    constexpr int million = 1'000'000;
    table.compare(
        "1,000,000 messages of 16 bytes, two processes", "a bare socket, the same pieces", 2.0, million,
        [] { transfer(million, 16); }, [] { transferBare(million, 16); });
    table.compare(
        "1 GB in messages of 1 MB, two processes", "a bare socket, the same pieces", 1.5, 1000,
        [] { transfer(1000, million); }, [] { transferBare(1000, million); });
    table.setRuns(9);
    table.compareTimes(
        "draining 100,000 waiting messages", "draining 10,000", 12, 100'000, [] { return drain(100'000); },
        [] { return drain(10'000); });
}
