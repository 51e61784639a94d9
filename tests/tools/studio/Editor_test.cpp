#include "support/TemporaryFolder.h"
#include "text/TextTest.h"
#include "tools/ase/AseFile.h"

#include "studio/Editor.h"

#include <KobaltrixTest/KobaltrixTest.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <optional>
#include <random>

// The studio's whole window, used by real events.

namespace {
struct EditorTest : testing::Test {
    EditorTest() {
        window.setRenderContext();
        KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, KXZeroPoint);
        KXImage picture(64, 16);
        for (int i = 0; i < 4; ++i)
            picture.drawRectFill({{float(i * 16 + 2), 2}, {12, 12}}, {1, float(i) / 4, 0, 1});
        picture.writeToPNG((folder / "hero.png").c_str());
        begin();
    }
    ~EditorTest() override { KXUISetTheme(KXUITheme()); }

    void begin() {
        editor.reset();
        editor.emplace(folder / "home");
        user.look();
    }
    void press(KXKeyNumber key, std::initializer_list<KXKeyNumber> others = {}) {
        for (const KXKeyNumber other : others)
            user.hold(other);
        user.press(key);
        for (const KXKeyNumber other : others)
            user.release(other);
        user.step();
    }
    void choose(KXKeyNumber key) { press(key, {KXKeyLeftControl}); }
    const Project& project() const { return editor->session().project(); }
    std::size_t frames() const {
        const NamedAnimation* animation = editor->session().animation();
        return animation ? animation->animation.frames.size() : 0;
    }

    KXTest library;
    const TemporaryFolder folder;
    KXWindow window{"Studio", {940, 560}};
    std::optional<Editor> editor;
    KXTestUser user{window, [this] { editor->poll(); }, [this] { editor->draw({940, 560}); }};
};
} // namespace

TEST_F(EditorTest, CopiesBetweenSprites) {
    ASSERT_TRUE(editor->open(folder / "hero.png"));
    choose(KXKeyK); // all cells
    ASSERT_EQ(frames(), 4u);
    choose(KXKeyA);
    press(KXKeyC, {KXKeyLeftControl, KXKeyLeftAlt});
    press(KXKeyR, {KXKeyLeftControl}); // which the clipboard does not follow
    choose(KXKeyB);
    press(KXKeyReturn);
    press(KXKeyC, {KXKeyLeftControl, KXKeyLeftShift});
    choose(KXKeyN);
    press(KXKeyRight); // Discard
    press(KXKeyReturn);
    ASSERT_TRUE(project().animations.empty() && project().boxes.empty());
    choose(KXKeyV);
    ASSERT_EQ(project().animations.size(), 1u);
    EXPECT_EQ(editor->session().frame()->bounds.x, 48) << "reversed";
    EXPECT_NE(std::string(editor->status()).find("hero.png"), std::string::npos) << "it is another sheet";
    choose(KXKeyV);
    EXPECT_EQ(project().animations.size(), 2u);
    KXSetClipboardText("something else");
    choose(KXKeyV);
    EXPECT_EQ(project().animations.size(), 2u);
}

TEST_F(EditorTest, AsksBeforeWorkIsLost) {
    ASSERT_TRUE(editor->open(folder / "hero.png"));
    choose(KXKeyK);
    choose(KXKeyE); // in the browser, whose keys are its own
    user.step();
    choose(KXKeyR);
    press(KXKeyEscape);
    EXPECT_EQ(editor->session().undoName(), "Cut frames");
    user.quit();
    user.step(2);
    press(KXKeyEscape); // Cancel
    EXPECT_FALSE(editor->hasQuit());
    EXPECT_EQ(frames(), 4u);
    user.dropFile((folder / "hero.png").c_str());
    user.step(2);
    press(KXKeyEscape);
    EXPECT_EQ(frames(), 4u);

    choose(KXKeyQ);
    press(KXKeyReturn); // Save, which asks where
    press(KXKeyReturn);
    EXPECT_TRUE(editor->hasQuit());
    EXPECT_TRUE(std::filesystem::exists(_KXFilePath(folder / "hero.spr")));

    // Somebody else has changed the file since.
    folder.write("hero.spr", "KXSPRITE");
    begin();
    ASSERT_FALSE(editor->open(folder / "hero.spr"));
    EXPECT_NE(std::string(editor->status()).find("cut short"), std::string::npos);
    ASSERT_TRUE(editor->open(folder / "hero.png"));
    choose(KXKeyK);
    press(KXKeyS, {KXKeyLeftControl});
    press(KXKeyReturn); // the browser asks once more
    press(KXKeyReturn);
    EXPECT_TRUE(editor->session().isSaved()) << editor->status();
    const std::string saved = contentOf(folder / "hero.spr");
    folder.write("hero.spr", "another program's");
    choose(KXKeyA);
    choose(KXKeyR);
    choose(KXKeyS);
    press(KXKeyEscape);
    EXPECT_EQ(contentOf(folder / "hero.spr"), "another program's");
    choose(KXKeyS);
    press(KXKeyReturn);
    EXPECT_TRUE(editor->session().isSaved());
    EXPECT_NE(contentOf(folder / "hero.spr"), "another program's");
    EXPECT_NE(contentOf(folder / "hero.spr"), saved);
}

TEST_F(EditorTest, PaintsTheSheetAndFollowsItsFile) {
    ASSERT_TRUE(editor->open(folder / "hero.png"));
    choose(KXKey5); // the pencil, in white, in the middle of the sheet
    user.drag({180, 245}, {240, 245});
    ASSERT_TRUE(project().picture);
    EXPECT_EQ(editor->session().undoName(), "Paint");
    const Pixels painted = *project().picture;
    KXImage other(64, 16, {0, 0, 1, 1});
    other.writeToPNG((folder / "hero.png").c_str());
    std::filesystem::last_write_time(_KXFilePath(folder / "hero.png"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::seconds(2));
    user.step(60);
    EXPECT_TRUE(*project().picture == painted) << "which the change does not hide";
    press(KXKeyF5);
    EXPECT_EQ(project().picture->at(1, 1).b, 255);
    choose(KXKeyZ);
    EXPECT_TRUE(*project().picture == painted);
    choose(KXKeyS);
    press(KXKeyReturn);
    ASSERT_TRUE(editor->session().isSaved()) << editor->status();
    KXImage saved;
    ASSERT_TRUE(saved.load((folder / "hero.png").c_str()));
    EXPECT_TRUE(Pixels(saved) == painted);
}

TEST_F(EditorTest, OpensADrawingAndSavesItsSheet) {
    const std::string one = std::string("\xFF\0\0\xFF", 4), other = std::string("\0\0\xFF\xFF", 4);
    const ase::File drawing = {2,
                               1,
                               32,
                               {{{ase::layer(), ase::rawCel({}, 2, 1, one + other)}, 160},
                                {{ase::rawCel({}, 2, 1, other + other)}}}};
    folder.write("drawn.aseprite", drawing.bytes());
    ASSERT_TRUE(editor->open(folder / "drawn.aseprite")) << editor->status();
    ASSERT_EQ(frames(), 2u);
    EXPECT_EQ(editor->session().frame()->duration, 10);
    const auto save = [&] {
        choose(KXKeyS);
        press(KXKeyReturn); // as the browser suggests
    };
    save();
    EXPECT_TRUE(editor->session().isSaved()) << editor->status();
    const std::string sheet = contentOf(folder / "drawn.png");
    EXPECT_FALSE(sheet.empty());
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(folder / "drawn.studio.json")))
        << "there is nothing to say";
    // The next time another sheet may lie there, which is asked about.
    folder.write("drawn.png", "somebody else's");
    std::filesystem::remove(_KXFilePath(folder / "drawn.spr"));
    ASSERT_TRUE(editor->open(folder / "drawn.aseprite"));
    save();
    press(KXKeyEscape);
    EXPECT_EQ(contentOf(folder / "drawn.png"), "somebody else's");
    save();
    press(KXKeyReturn); // Replace
    EXPECT_EQ(contentOf(folder / "drawn.png"), sheet);
    EXPECT_TRUE(std::filesystem::exists(_KXFilePath(folder / "drawn.spr")));
}

// Somebody who presses and drags anything but what is about files: nothing falls, and everything is undone.
TEST_F(EditorTest, BearsAnyUser) {
    constexpr std::string_view aboutFiles = "ejnoqs";
    for (unsigned seed = 0; seed < (std::getenv("KOBALTRIX_DEEP") ? 40u : 3u); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto any = [&](int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); };
        const auto anywhere = [&] { return KXPoint{float(any(940)), float(30 + any(530))}; };
        begin();
        ASSERT_TRUE(editor->open(folder / "hero.png"));
        const Project first = project();
        for (int i = 0; i < 250; ++i) {
            const KXKeyNumber modifiers[] = {KXKeyLeftControl, KXKeyLeftShift};
            const int modifier = any(4);
            const auto key = static_cast<KXKeyNumber>(1 + any(120));
            const bool isFiles = aboutFiles.find(static_cast<char>('a' + key - 1)) != aboutFiles.npos;
            if (modifier < 2)
                user.hold(modifiers[modifier]);
            switch (any(8)) {
            case 0:
                user.click(anywhere(), any(4) ? KXMouseLeft : KXMouseRight);
                break;
            case 1:
                user.drag(anywhere(), anywhere(), 3);
                break;
            case 2:
                user.move(anywhere());
                user.wheel(float(any(5) - 2));
                break;
            case 3:
                user.type("7");
                break;
            default:
                if (key != KXKeyF10 && key != KXKeyLeftAlt && key != KXKeyRightAlt &&
                    !(isFiles && modifier == 0))
                    user.press(key);
            }
            if (modifier < 2)
                user.release(modifiers[modifier]);
            user.step();
            if (i % 50 == 0)
                user.look();
        }
        EXPECT_FALSE(editor->hasQuit());
        for (int i = 0; i < 3; ++i) // whatever is open
            press(KXKeyEscape);
        user.click({60, 700});
        for (int i = 0; i < 2000 && editor->session().canUndo(); ++i)
            choose(KXKeyZ);
        EXPECT_TRUE(project() == first);
    }
}
