// A server and a client in one program: one lights stars, the other lights them too and answers.
#include "example.h"

#include <vector>

static void drawSky(float left, const char* title, const std::vector<KXPoint>& stars) {
    KXDrawRectFill({{left, 40}, {170, 180}}, dusk);
    KXDrawTriangleFill({left, 220}, {left + 60, 170}, {left + 170, 220}, teal);
    KXUIGlobalFontPrint({left, 18}, paper, title);
    for (std::size_t i = 0; i < stars.size(); ++i) {
        const KXPoint star = {left + stars[i].x, 40 + stars[i].y};
        const KXPoint before = i ? KXPoint{left + stars[i - 1].x, 40 + stars[i - 1].y} : star;
        KXDrawLine(before, star, withAlpha(paper, 0.3f));
        KXDrawCircleFill(star, 3, 16, gold);
    }
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    KXInitializeLog("network.log", 1);
    KXLogEnableCategory("net");
    {
        KXWindow window("Server and client", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXNetworkServer server("127.0.0.1", 0, 4, 0, 4); // this machine only, any free port, 4 clients
        KXNetworkClient client;
        server.setLimits(KXNetworkLimitsForStrangers()); // nobody keeps it waiting or fills its memory
        client.setLimits(KXNetworkLimitsForStrangers());
        char* address = server.IPAddress(); // "127.0.0.1:port", ours to free
        client.beginConnecting("127.0.0.1", std::atoi(std::strchr(address, ':') + 1));
        std::free(address);
        std::vector<KXPoint> lit, seen;
        long answers = 0;
        KXRandomGenerator dice(5); // the same stars every time
        KXTimer nextStar(6);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                while (server.checkForIncomingConnections() != -1) { // the number of a new client
                }
                server.poll();
                client.poll();
                if (client.state() == KXNetworkNobodyThere)
                    return example.failed();
                if (client.connected() && nextStar.tick() && lit.size() < 16) {
                    lit.push_back({10 + 10.0f * lit.size(), dice.range(12.0f, 110.0f)});
                    for (int to : server.clientIDList()) {
                        KXNetworkBuffer message; // one for each: sending appends to it
                        message.appendFloat(lit.back().x);
                        message.appendFloat(lit.back().y);
                        server.sendBufferToClient(to, &message);
                    }
                }
                while (const std::unique_ptr<KXNetworkBuffer> message{client.receiveNext()}) {
                    seen.push_back({message->readFloat(), message->readFloat()}); // as they were written
                    KXNetworkBuffer answer;
                    answer.appendLong(static_cast<long>(seen.size()));
                    client.send(&answer);
                }
                int from = -1; // whose message it is
                while (const std::unique_ptr<KXNetworkBuffer> got{server.receiveNext(&from)})
                    KXLog("net", "client %d sees %ld stars\n", from, answers = got->readLong());
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            drawSky(20, "the server's sky", lit);
            drawSky(210, "the client's sky", seen);
            KXUIGlobalFontPrint({20, 228}, gold, KXTempString("The client says that it sees %ld.", answers));
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeinitializeLog();
    KXDeInit();
    return 0;
}
