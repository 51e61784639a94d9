#include "support/WindowTest.h"

#include <SDL_opengl.h>

WindowTest::WindowTest(KXSize size) {
    EXPECT_EQ(KXInit(), -1) << KXError();
    window = std::make_unique<KXWindow>("Test", size);
    window->setRenderContext();
    fill({0, 0, 0, 1});
}

WindowTest::~WindowTest() {
    window.reset();
    KXDeInit();
}

void WindowTest::fill(KXColor color) {
    glClearColor(color.r, color.g, color.b, color.a);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}
