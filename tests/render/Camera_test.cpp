// A camera shows what OpenGL's matrices would, and leaves out what lies outside.

#include "RenderTest.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXFont.h>

namespace {
struct Camera : RenderTest {
    Camera() { loadNoise(noise, 9, 7); }

    void world() {
        paint({0.2f, 0.4f, 0.6f, 1}, rect(-20, -20, 60, 40));
        noise.draw({.position = {3, 4}, .scale = {2, 2}});
        KXDrawTriangleFill({0, 0}, {30, 5}, {5, 20}, {1, 0.5f, 0, 0.5f});
        font.print({-10, 12}, {1, 1, 1, 1}, "World");
        outline.print({4, 30}, {1, 1, 0, 1}, "o");
    }

    KXTexture noise, target{64, 48};
    KXFont font{testFont(), KXAliasModeTexture}, outline{testFont(), KXAliasModePolygon};
};

TEST_F(Camera, ShowsWhatMatricesWould) {
    font.setSize(9);
    outline.setSize(20);
    for (KXRenderContext* const context : targets(target))
        for (const KXCamera& camera :
             {KXCamera{{7, 9}, 1, 0, {{0, 0}, {-1, -1}}}, KXCamera{{5, 5}, 2, 90, {{0, 0}, {-1, -1}}},
              KXCamera{{-3, 4}, 1.7f, -33.5f, {{20, 0}, {-1, 30}}}}) {
            context->setRenderContext();
            const auto shown = [&](const std::function<void()>& draw) {
                fill({0, 0, 0, 1});
                draw();
                KXFlushDrawBatch();
                return context == &target ? Image::of(target) : Image::of(*window);
            };
            const auto& [origin, size] = camera.area;
            const KXSize area = {64 - origin.x, size.height < 0 ? 48 : size.height};
            const Image expected = shown([&] {
                context->setClipTo({{origin.x, context == &target ? origin.y : origin.y}, area});
                glPushMatrix();
                glTranslatef(origin.x + area.width / 2, origin.y + area.height / 2, 0);
                glScalef(camera.zoom, camera.zoom, 1);
                glRotatef(-camera.rotation, 0, 0, 1);
                glTranslatef(-camera.centre.x, -camera.centre.y, 0);
                world();
                glPopMatrix();
                context->unsetClip();
            });
            for (const bool batched : {false, true}) {
                batched ? KXBeginDrawBatch() : KXEndDrawBatch();
                const Image image = shown([&] {
                    KXPushCamera(camera);
                    world();
                    KXPopCamera();
                });
                KXEndDrawBatch();
                EXPECT_LE(differingPixels(expected, image, 2), camera.zoom == 1 ? 0 : 12) << camera.rotation;
                EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
            }
            target.unsetRenderContext();
            window->setRenderContext();
        }
}

TEST_F(Camera, PointsGoThereAndBack) {
    KXCamera camera;
    camera.centre = {160000.5f, -7};
    EXPECT_EQ(KXCameraFromWorld(camera, {160001, -7}).x, 32.5f) << "exact far away";
    camera = {{10, 20}, 2, 90, {{4, 8}, {20, 10}}};
    const KXPoint shown = KXCameraFromWorld(camera, {11, 20}), back = KXCameraToWorld(camera, shown);
    EXPECT_EQ((std::array{shown.x, shown.y, back.x, back.y}), (std::array{14.0f, 11.0f, 11.0f, 20.0f}));
    const KXRect bounds = KXCameraBounds(camera);
    EXPECT_EQ((std::array{bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height}),
              (std::array{7.5f, 15.0f, 5.0f, 10.0f}));
    camera.rotation = -45;
    const KXSize turned = KXCameraBounds(camera).size;
    EXPECT_NEAR(turned.width + 2 * turned.height, 3 * 10.607f, 0.01f);
    for (const KXCamera& blind :
         {KXCamera{{0, 0}, 0, 0, {{0, 0}, {-1, -1}}}, KXCamera{{0, 0}, -1, 0, {{0, 0}, {-1, -1}}},
          KXCamera{{NAN, 0}, 1, 0, {{0, 0}, {-1, -1}}}, KXCamera{{0, 0}, 1, INFINITY, {{0, 0}, {-1, -1}}},
          KXCamera{{0, 0}, 1, 0, {{70, 0}, {-1, -1}}}, KXCamera{{0, 0}, 1, 0, {{0, 0}, {5, 0}}}}) {
        EXPECT_EQ(KXCameraToWorld(blind, {1, 1}).x + KXCameraBounds(blind).size.width, 0);
        EXPECT_EQ(boxOf(picture([&] {
                      KXPushCamera(blind);
                      world();
                      KXDrawLine({0, 0}, {9, 9}, {1, 1, 1, 1});
                      KXPopCamera();
                      KXPopCamera(); // one too many
                  })),
                  nothing);
    }
}

TEST_F(Camera, ABatchLeavesOutWhatLiesOutside) {
    KXBeginDrawBatch();
    window->swapBuffers();
    KXCamera camera;
    camera.centre = {500, 500};
    KXPushCamera(camera);
    for (int i = 0; i < 100; ++i)
        noise.draw({.position = {500.0f + 40.0f * float(i), 500}});
    KXDrawRectFill({{0, 0}, {460, 470}}, {1, 1, 1, 1});
    KXPopCamera();
    EXPECT_EQ(KXCurrentDrawStatistics().flushes, 0) << "a camera of the whole target lets nothing out";
    KXFlushDrawBatch();
    glTranslatef(-400, 0, 0); // the game's own matrices count
    KXPushCamera(camera);
    noise.draw({.position = {900, 500}});
    KXPopCamera();
    KXEndDrawBatch();
    const KXDrawStatistics counted = KXCurrentDrawStatistics();
    EXPECT_EQ(counted.culled, 99 + 1);
    EXPECT_EQ(counted.quads, 1 + 1);
}
} // namespace
