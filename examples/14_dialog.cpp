// A dialog box: a message and buttons to answer it. Here an owl leads a short conversation.
#include "example.h"

struct Page {
    const char* message;
    const char* answers[2];
    int next[2]; // the page that each answer leads to
};

const Page pages[] = {
    {"Are you lost in the {C0.49,0.79,0.5,1}dark wood{EC}?", {"Yes", "Not at all"}, {1, 2}},
    {"Follow the {C1,0.85,0.54,1}lanterns{EC} to the river.", {"Thank you", "Which lanterns?"}, {2, 0}},
    {"Then {C0.91,0.41,0.47,1}good night{EC}, traveller.", {"Good night", "Wait!"}, {0, 0}},
};

// A new box for each question: what was clicked in one stays.
static std::unique_ptr<KXUIDialogBox> open(const Page& page) {
    auto box = std::make_unique<KXUIDialogBox>();
    box->setPadding(14);
    box->setBackgroundColor(dusk.r, dusk.g, dusk.b, 1);
    box->setTextColor(paper.r, paper.g, paper.b, 1);
    box->setBorderColor(gold.r, gold.g, gold.b, 1);
    box->setMessage(page.message);
    for (const char* answer : page.answers)
        box->addButton(answer);
    box->setRect({130, 70}, {252, 96}); // the box, then its buttons where they look best
    box->button(0)->setOrigin({144, 126});
    box->button(1)->setOrigin({230, 126});
    return box;
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("A dialog box", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, night, teal, teal, gold, paper); // what the buttons take over
        KXTexture owl(example.file("owl.png"));
        int page = 0, step = 0;
        std::unique_ptr<KXUIDialogBox> box = open(pages[page]);
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                box->poll();
                const int answer = box->buttonIndexClicked(); // -1 before the first click
                if (answer >= 0) {
                    page = pages[page].next[answer];
                    box = open(pages[page]);
                }
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            KXDrawRectFill({{0, 196}, {400, 54}}, teal);
            for (int i = 0; i < 9; ++i) { // the wood
                const float x = 24 + 46.0f * i, top = 96 + 30.0f * (i % 3);
                KXDrawTriangleFill({x, top}, {x - 30, 200}, {x + 30, 200}, dusk);
            }
            KXDrawTriangleFill({132, 132}, {132, 148}, {112, 146}, gold); // who speaks
            owl.draw(step % 100 < 90 ? 0 : 16, 0, step % 100 < 90 ? 16 : 32, 16, 80, 80, 24, 122, 1, 1, 0, 0,
                     0);
            box->draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
