// A server and a client, here in one program that talks to itself: the server lights stars and tells the client,
// which lights them too and answers. What happens is written to network.log, beside the program.
#include "example.h"

#include <string>
#include <vector>

static void drawSky(float left, const char* title, const std::vector<KXPoint>& stars) {
    KXDrawRectFill({{left, 40}, {170, 180}}, dusk);
    KXDrawTriangleFill({left, 220}, {left + 60, 170}, {left + 130, 220}, teal);
    KXDrawTriangleFill({left + 60, 220}, {left + 120, 184}, {left + 170, 220}, teal);
    KXUIGlobalFontPrint({left, 18}, paper, title);
    for (std::size_t i = 0; i < stars.size(); ++i) {
        const KXPoint star = {left + stars[i].x, 40 + stars[i].y};
        if (i > 0)
            KXDrawLine({left + stars[i - 1].x, 40 + stars[i - 1].y}, star, withAlpha(paper, 0.3f));
        KXDrawCircleFill(star, 3, 16, gold);
    }
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    KXInitializeLog("network.log", 1);
    KXLogEnableCategory("net");
    std::srand(5); // the same stars every time
    {
        KXWindow window("Server and client", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXNetworkServer server("127.0.0.1", 0, 4, 0, 4); // this machine only, any free port, 4 clients
        KXNetworkClient client;
        char* address = server.IPAddress(); // "127.0.0.1:port", ours to free
        const int port = std::atoi(std::strchr(address, ':') + 1);
        std::free(address);
        if (!client.connect("127.0.0.1", port))
            return 1;
        std::vector<KXPoint> lit, seen;
        long answers = 0;
        KXTimer nextStar(15);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                const int id = server.checkForIncomingConnections(); // -1 if nobody came
                if (id >= 0)
                    KXLog("net", "client %d came\n", id);
                if (nextStar.tick() && lit.size() < 40) {
                    lit.push_back({KXRandomizef(10, 160), KXRandomizef(10, 120)});
                    for (int to : server.clientIDList()) {
                        KXNetworkBuffer message; // one for each: sending appends to it
                        message.appendFloat(lit.back().x);
                        message.appendFloat(lit.back().y);
                        server.sendBufferToClient(to, &message);
                    }
                }
                while (const std::unique_ptr<KXNetworkBuffer> message{client.receive()}) {
                    const float x = message->readFloat(); // in the order in which it was written
                    seen.push_back({x, message->readFloat()});
                    KXNetworkBuffer answer;
                    answer.appendLong(static_cast<long>(seen.size()));
                    client.send(&answer);
                }
                for (int from : server.clientIDList())
                    if (const std::unique_ptr<KXNetworkBuffer> message{server.receiveBufferFromClient(from)}) {
                        answers = message->readLong();
                        KXLog("net", "client %d sees %ld stars\n", from, answers);
                    }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXDrawRectFill({{0, 0}, window.size()}, night);
            drawSky(20, "the server's sky", lit);
            drawSky(210, "the client's sky", seen);
            KXUIGlobalFontPrint({20, 228}, gold, KXTempString("The client says that it sees %ld.", answers));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
        }
    }
    KXDeinitializeLog();
    KXDeInit();
    return 0;
}
