// Three dimensions, in OpenGL of one's own, between things that the library draws.
#include "example.h"

#ifdef __APPLE__
#include <OpenGL/gl.h>
#else
#include <GL/gl.h>
#endif

// The six sides of a cube, counter-clockwise seen from outside: in 3D mode what faces away is not drawn.
const float sides[6][4][3] = {
    {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}}, {{1, -1, -1}, {-1, -1, -1}, {-1, 1, -1}, {1, 1, -1}},
    {{1, -1, 1}, {1, -1, -1}, {1, 1, -1}, {1, 1, 1}}, {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1}, {-1, 1, -1}},
    {{-1, 1, 1}, {1, 1, 1}, {1, 1, -1}, {-1, 1, -1}}, {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}}};
const float corners[4][2] = {{0, 1}, {1, 1}, {1, 0}, {0, 0}}; // of the picture on each side

static void drawCube(KXTexture& picture, float x, float angle) {
    const float light[] = {1, 0.5f, 0.85f, 0.65f, 1, 0.4f};
    picture.bind(); // what OpenGL draws with from now on
    glLoadIdentity();
    glTranslatef(x, 0, -7); // the camera looks along -z, y grows upward
    glRotatef(25, 1, 0, 0);
    glRotatef(angle, 0, 1, 0);
    glBegin(GL_QUADS);
    for (int side = 0; side < 6; ++side) {
        glColor3f(light[side], light[side], light[side]);
        for (int corner = 0; corner < 4; ++corner) {
            glTexCoord2fv(corners[corner]);
            glVertex3fv(sides[side][corner]);
        }
    }
    glEnd();
}

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("OpenGL of one's own", {400, 250});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 12, KXZeroPoint);
        KXTexture owls(example.file("owl.png")), panel(example.file("panel.png"));
        KXTexture face(24, 24); // drawn once, for all sides of the cubes
        face.setRenderContext();
        panel.draw(0, 0, 0);
        owls.draw(0, 0, 16, 16, 4, 5, 0);
        face.unsetRenderContext();
        int step = 0;
        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                ++step;
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night); // and which things in 3D are nearer is forgotten
            KXDrawCircleFill({200, 118}, 96, 64, dusk);
            window.setRenderingMode(KXWindowRenderingMode3D);
            drawCube(face, -1.3f, static_cast<float>(step) * 0.6f);
            drawCube(face, 1.3f, static_cast<float>(step) * -0.9f);
            window.setRenderingMode(KXWindowRenderingMode2D);
            KXUIGlobalFontPrint({20, 222}, gold, "2D again: text above the cubes");
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
