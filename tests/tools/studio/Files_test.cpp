#include "SpriteIO.h"
#include "studio/ProjectFile.h"
#include "studio/Session.h"
#include "studio/Settings.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXImage.h>

#include <gtest/gtest.h>

#include <functional>

// What the studio saves, and finds again.

namespace {
/// A sprite with all that only the studio knows: an order of its own, colours, an animation without frames.
Project some() {
    Session session;
    session.begin({});
    session.setTexture("hero.png");
    session.setGrid({1, 2, 8, 9, 3, 4});
    for (const char* name : {"walk", "idle", "later", "Ünd \"so\""}) {
        session.addAnimation(name);
        if (name[0] != 'l')
            session.addFrames({{7, {0.5f, 0, 8, 8}}, {0, {8, 0.25f, 8, 9}}});
        session.setLoops(name[0] != 'i');
    }
    session.addBox({-1.5f, 2, 3, 4});
    session.renameBox("z");
    session.addBox({0, 0, 5, 5});
    session.renameBox("a");
    session.setBoxColor(0x12345680);
    return session.project();
}

struct StudioFiles : testing::Test {
    std::string path(const char* name) const { return folder / name; }
    const TemporaryFolder folder;
};

std::string faultOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const Fault& fault) {
        return fault.what();
    }
    return "";
}
} // namespace

TEST_F(StudioFiles, WhatIsSavedComesBack) {
    KXImage(32, 16, {1, 0, 0, 1}).writeToPNG(path("hero.png").c_str());
    const Project project = some();
    EXPECT_EQ(saveProject(project, path("hero.spr")), "");
    const OpenedProject opened = openProject(path("hero.spr"));
    EXPECT_TRUE(opened.project == project);
    EXPECT_EQ(opened.note, "");
    EXPECT_EQ(opened.sprite, path("hero.spr"));
    EXPECT_EQ(opened.sheet, path("hero.png"));

    // What others did to the sprite is taken as it is: the rest keeps its order.
    Project changed = project;
    changed.animations.erase(changed.animations.begin());
    changed.animations.push_back(
        std::make_shared<NamedAnimation>(NamedAnimation{"Run", {0, {{1, {0, 0, 1, 1}}}}}));
    saveDocument(documentOf(changed), path("hero.spr"));
    EXPECT_TRUE(openProject(path("hero.spr")).project == changed);

    // A plain sprite needs no file beside it.
    const Project plain = projectOf(documentOf(openProject(path("hero.png")).project));
    EXPECT_EQ(saveProject(plain, path("plain.spr")), "");
    EXPECT_FALSE(std::filesystem::exists(_KXFilePath(path("plain.studio.json"))));
}

TEST_F(StudioFiles, NothingIsLost) {
    const Project project = some();
    saveProject(project, path("hero.spr"));
    // A broken file beside the sprite is said, and kept where another one comes in its place.
    folder.write("hero.studio.json", "{\"kxsprite studio\": 1, \"grid\": 7");
    const OpenedProject opened = openProject(path("hero.spr"));
    EXPECT_NE(opened.note.find("hero.studio.json"), std::string::npos) << opened.note;
    EXPECT_EQ(documentOf(opened.project), documentOf(projectOf(documentOf(opened.project))));
    saveProject(project, path("hero.spr"));
    EXPECT_EQ(contentOf(path("hero.studio.json.broken")), "{\"kxsprite studio\": 1, \"grid\": 7");
    EXPECT_TRUE(openProject(path("hero.spr")).project == project);

    const std::string before = contentOf(path("hero.spr"));
    EXPECT_NE(faultOf([&] { saveProject(project, path("nowhere/hero.spr")); }), "");
    EXPECT_EQ(contentOf(path("hero.spr")), before);
    EXPECT_NE(faultOf([&] { openProject(path("missing.spr")); }), "");
    EXPECT_NE(faultOf([&] { openProject(path("missing.png")); }), "");
    folder.write("export.json", "{\"frames\": [], \"meta\": {}}");
    EXPECT_NE(faultOf([&] { openProject(path("export.json")); }).find("kxsprite make"), std::string::npos);
}

TEST_F(StudioFiles, TextsOfProjectsAreStrict) {
    const std::string text = textOf({"frames", "a/hero.spr", some()});
    const std::optional<ProjectText> read = projectOfText(text);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->project == some() && read->what == "frames" && read->path == "a/hero.spr");
    for (const char* other : {"", "frames", "{}", "[1, 2]", "{\"frames\": 1}"})
        EXPECT_FALSE(projectOfText(other)) << other;
    // Whatever is cut off or exchanged, it is refused or it is a project: nothing else happens.
    for (std::size_t length = 30; length < text.size(); length += 7)
        faultOf([&] { projectOfText(text.substr(0, length)); });
    const std::pair<const char*, const char*> bad[] = {{"\"color\": \"#12345680\"", "\"color\": \"red\""},
                                                       {"\"width\": 8,", "\"width\": 0,"},
                                                       {"\"gapX\": 3", "\"gapX\": 99999"},
                                                       {"\"kxsprite studio\": 1", "\"kxsprite studio\": 2"}};
    for (const auto& [from, to] : bad) {
        std::string changed = text;
        const std::size_t at = changed.rfind(from);
        ASSERT_NE(at, std::string::npos) << from;
        EXPECT_NE(faultOf([&] { projectOfText(changed.replace(at, std::string(from).size(), to)); }), "")
            << to;
    }
}

TEST_F(StudioFiles, SettingsAndWorkAreKept) {
    const std::string home = path("home/deep");
    EXPECT_TRUE(loadSettings(home) == Settings());
    Settings settings;
    settings.theme = "light";
    settings.sheetShare = 0.25f;
    settings.background = 0x112233ff;
    for (int i = 0; i < 12; ++i)
        noteRecent(settings, "sprite" + std::to_string(i % 10));
    EXPECT_EQ(settings.recent.size(), 8u);
    EXPECT_EQ(settings.recent.front(), "sprite1");
    saveSettings(settings, home);
    EXPECT_TRUE(loadSettings(home) == settings);
    folder.write("home/deep/settings.txt",
                 "kobaltrix settings 1\ntheme: 5\nwidth: -7\nrecent: 1\nshows onion skin: yes\nend\n");
    Settings expected;
    expected.width = 940;
    expected.showsOnion = true;
    EXPECT_TRUE(loadSettings(home) == expected) << "what makes no sense is as at first";
    folder.write("home/deep/settings.txt", "[");
    EXPECT_TRUE(loadSettings(home) == Settings());

    const Recovery recovery(home), none("");
    recovery.keep("a.spr", some());
    recovery.keep("", {});
    none.keep("a.spr", some());
    ASSERT_TRUE(recovery.find("a.spr"));
    EXPECT_TRUE(*recovery.find("a.spr") == some());
    Project painted = some();
    painted.picture.emplace(KXImage(40, 9, {0, 0.2f, 1, 0.4f}));
    recovery.keep("a.spr", painted);
    EXPECT_TRUE(*recovery.find("a.spr") == painted);
    recovery.keep("a.spr", some());
    EXPECT_TRUE(*recovery.find("a.spr") == some());
    EXPECT_TRUE(recovery.find(""));
    EXPECT_FALSE(recovery.find("b.spr") || none.find("a.spr"));
    recovery.forget("a.spr");
    EXPECT_FALSE(recovery.find("a.spr"));
}
