#pragma once

#include "studio/Session.h"
#include "studio/Sheet.h"

#include "support/Allocations.h"
#include "support/TemporaryFolder.h"
#include "text/TextTest.h"

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KobaltrixTest.h>

#include <memory>
#include <string>
#include <utility>

/// A window of 400 x 300 points with one of the studio's views in a panel, a sheet of 64 x 32 pixels with
/// cells of 16, and somebody who works it.
struct StudioTest : testing::Test {
    StudioTest() {
        window.setRenderContext();
        KXUISetGlobalFont(testFont(), KXAliasModeTexture, 11, KXZeroPoint);
        KXUISetTheme(KXUIDarkTheme());
        KXImage picture(64, 32);
        for (int cell = 0; cell < 8; ++cell)
            picture.drawRectFill({{float(cell % 4 * 16 + 3), float(cell / 4 * 16 + 2)}, {10, 12}},
                                 {1, float(cell) / 8, 0.25f, 1});
        EXPECT_TRUE(picture.writeToPNG(sheetPath.c_str()));
        EXPECT_TRUE(sheet.load(sheetPath));
        session.begin({});
    }
    ~StudioTest() override { KXUISetTheme(KXUITheme()); }

    /// Puts the view into the window.
    void show(_KXUIWidget& view, KXRect rect = {{0, 0}, {400, 300}}) {
        view.setRect(rect.origin, rect.size);
        panel.add(view);
        panel.focus(view);
        user.look();
    }
    void press(std::initializer_list<KXKeyNumber> keys) {
        for (const KXKeyNumber key : keys)
            user.hold(key);
        user.step();
        for (const KXKeyNumber key : keys)
            user.release(key);
        user.step();
    }
    /// The frames of the chosen animation: place, size and duration of each.
    std::string frames() const {
        std::string text;
        if (session.animation())
            for (const auto& [duration, area] : session.animation()->animation.frames)
                text += std::to_string(int(area.x)) + "," + std::to_string(int(area.y)) + " " +
                        std::to_string(area.width) + "x" + std::to_string(area.height) + ":" +
                        std::to_string(duration) + " ";
        return text;
    }

    KXTest library;
    const TemporaryFolder folder;
    const std::string sheetPath = folder / "sheet.png";
    KXWindow window{"Studio", {400, 300}};
    Session session;
    Sheet sheet;
    KXUIPanel panel;
    void draw() {
        KXClear({0, 0, 0, 1});
        KXBeginDrawBatch();
        panel.draw();
        KXEndDrawBatch();
    }
    /// Expects that a step and a frame in which nothing changes ask for no memory.
    void expectSteady() {
        user.step(2);
        const auto frame = [this] { panel.poll(), draw(); };
        frame();
        EXPECT_EQ(allocationsOf(frame), 0u);
    }
    KXTestUser user{window, [this] { panel.poll(); }, [this] { draw(); }};
};
