// Requests for memory, and calls of the system and the driver, that are refused, each in turn that something
// makes: it tells of that or succeeds all the same, changes nothing or everything, and leaves nothing open.

#include "net/NetTest.h"
#include "render/ContextParts.h"
#include "render/KXTextureCache.h"
#include "render/KXWindow.h"
#include "support/Allocations.h"
#include "support/RefusedCalls.h"
#include "text/TextTest.h"

#include <Kobaltrix/Kobaltrix.h>

#include <SDL.h>

namespace {
constexpr const char *shortText = "before",
                     *longText = "after it has got longer than a string keeps by itself",
                     *longerText =
                         "and once more, so that it is longer than everything there was before it is.";

long &memory = requestsUntilRefusal, &calls = callsUntilRefusal;

std::size_t filesIn(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

struct Refusals : TextTest {
    Refusals() : TextTest({320, 200}) {}

    /// @param make makes what is acted on. @param state tells all that can be seen of it. @param act tells
    /// whether it succeeded.
    template<class Make, class State>
    void refuseEach(long& kind, const char* name, Make make, State state,
                    const std::function<int(decltype(*make()))>& act) {
        const auto untouched = make();
        const std::string before = state(*untouched);
        const auto unhindered = make();
        EXPECT_NE(act(*unhindered), 0) << name << KXError();
        const std::string after = state(*unhindered);
        const std::size_t files = filesIn("/proc/self/fd");
        long granted = 0;
        for (bool refused = true; refused; granted = nextToRefuse(granted)) {
            const auto thing = make();
            bool succeeded = false;
            _KXClearError();
            const Refusal refusal = refuse(kind, granted, [&] { succeeded = act(*thing) != 0; });
            refused = refusal.happened;
            const testing::Message where = testing::Message() << name << ", " << refusedCall << granted;
            EXPECT_TRUE(succeeded || (refused && (refusal.threw || *KXError()))) << where;
            EXPECT_EQ(state(*thing), succeeded ? after : before) << where;
            _KXClearError();
            EXPECT_TRUE(succeeded || act(*thing)) << where << " again: " << KXError();
            EXPECT_EQ(state(*thing), after) << where << " again";
            EXPECT_EQ(filesIn("/proc/self/fd"), files) << where;
        }
        EXPECT_GT(granted, 1) << name << " asks for nothing";
    }

    /// Where there is nothing to make, and perhaps nothing to see.
    void refuseEach(
        long& kind, const char* name, const std::function<int()>& act,
        const std::function<std::string()>& state = [] { return ""; },
        const std::function<void()>& prepare = [] {}) {
        refuseEach(
            kind, name, [&] { return (prepare(), std::make_unique<int>()); }, [&](int) { return state(); },
            [&](int) { return act(); });
    }

    /// A widget of that kind with a font that has drawn nothing yet.
    template<class Widget>
    static auto widget(std::function<void(Widget&)> prepare) {
        return [prepare] {
            KXClearGUIFontCache();
            KXUISetGlobalFont(testFont(), KXAliasModeTexture, 14, KXZeroPoint);
            auto made = std::make_unique<Widget>();
            made->setRect({10, 10}, {200, 24});
            prepare(*made);
            return made;
        };
    }
    std::string pixels() { return std::to_string(_KXHashOfPixels(*window)); }
    /// What is seen of a widget.
    std::string picture(_KXUIWidget& of) {
        KXClear({0, 0, 0, 1});
        of.draw();
        return pixels();
    }

    const TemporaryFolder folder;
};

TEST_F(Refusals, Sprites) {
    const auto make = [] {
        auto sprite = std::make_unique<KXSprite>();
        sprite->setTextureName(shortText);
        sprite->addFrameInfo(shortText, {{1, 2}, {3, 4}}, 5);
        sprite->setAnimation(shortText);
        return sprite;
    };
    const std::string path = folder / "a sprite file with a name of some length";
    const auto state = [](KXSprite& sprite) {
        testing::internal::CaptureStdout();
        sprite.print();
        const std::string shown = testing::internal::GetCapturedStdout();
        return shown.substr(shown.find('\n')) + sprite.currentAnimation();
    };
    const std::pair<const char*, void (*)(KXSprite&)> rows[] = {
        {"texture", [](KXSprite& sprite) { sprite.setTextureName(longText); }},
        {"current", [](KXSprite& sprite) { sprite.setAnimation(longText); }},
        {"new animation", [](KXSprite& sprite) { sprite.addFrameInfo(longText, {}, 1); }},
        {"frame", [](KXSprite& sprite) { sprite.insertFrameInfo(0, shortText, {}, 1); }},
        {"box", [](KXSprite& sprite) { sprite.addBoundingBox(longText, {}); }},
        {"rename", [](KXSprite& sprite) { sprite.renameAnimation(shortText, longText); }},
        {"name", [](KXSprite& sprite) { std::free(sprite.textureName()); }},
        {"name at", [](KXSprite& sprite) { std::free(sprite.animationAtIndex(0)); }},
        {"clone", [](KXSprite& sprite) { delete sprite.clone(); }},
    };
    for (const auto& [name, act] : rows)
        refuseEach(memory, name, make, state, [run = act](KXSprite& sprite) { return (run(sprite), -1); });
    KXSprite other;
    other.addFrameInfo(longText, {}, 1);
    other.addBoundingBox(longerText, {});
    other.writeToFile(path.c_str());
    refuseEach(memory, "load", make, state, [&](KXSprite& sprite) { return sprite.load(path.c_str()); });
}

TEST_F(Refusals, Windows) {
    const auto windows = [] {
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
        return std::to_string(_windowsMap->size()) + ' ' + std::to_string(_KXCurrentGraphicsContext) + ' ' +
               std::to_string(SDL_GetNumAllocations());
    };
    const auto open = [] { return KXWindow("Another", {40, 30}).id() != 0; };
    const auto depth = [] {
        KXWindow another("Another", {40, 30});
        another.setRenderContext();
        makeDriverRefusable();
        _KXClearError();
        another.setRenderingMode(KXWindowRenderingMode3D);
        another.swapBuffers();
        return !*KXError();
    };
    open();
    refuseEach(memory, "window", open, windows);
    refuseEach(calls, "window", open); // the context before may be refused, too
    refuseEach(calls, "depth", depth);
    window.reset(); // the first of all makes the list
    for (long granted = 0; refuse(memory, granted, open).threw; granted = nextToRefuse(granted))
        EXPECT_EQ(_windowsMap, nullptr) << "request " << granted;
}

TEST_F(Refusals, WhatIsSavedIsOldOrNew) {
    const std::string path = folder / "saved";
    KXSprite sprite;
    sprite.addFrameInfo("walking", {{1, 2}, {3, 4}}, 5);
    KXActions actions;
    actions.bind("jump", KXInputOfKey(KXKeySpace));
    const std::unique_ptr<KXTexture> texture(window->copyTexture());
    const std::pair<const char*, std::function<int()>> rows[] = {
        {"sprite", [&] { return sprite.writeToFile(path.c_str()); }},
        {"actions", [&] { return actions.save(path.c_str()); }},
        {"PNG", [&] { return texture->writeToPNG(path.c_str()); }},
        {"image", [&] { return KXImage(20, 10).writeToPNG(path.c_str()); }},
        {"BMP", [&] { return window->saveBuffer(path.c_str(), 0); }},
    };
    for (const auto& [name, save] : rows)
        for (long* kind : {&memory, &calls})
            refuseEach(
                *kind, name, save, [&] { return contentOf(path) + std::to_string(filesIn(folder.path())); },
                [&] { folder.write("saved", "what there was"); });
}

TEST_F(Refusals, WhatIsLoadedIsWholeOrRefused) {
    KXInitAudio();
    const std::string picture = folder / "picture with a long name.png", controls = folder / "actions",
                      sound = SOUND_FILES "/44.wav",
                      recording = PROJECT "/demo/ember_night/recordings/keys.txt";
    std::unique_ptr<KXTexture>(window->copyTexture())->writeToPNG(picture.c_str());
    const std::string theme = folder.write(
        "theme",
        R"({"ring": 3, "skins": {"knob": {"image": "picture with a long name.png", "normal": [0, 0, 9, 9]}}})");
    const std::string settings = folder.write("settings", "kobaltrix settings 1\na long key of them: \"" +
                                                              std::string(longText) + "\"\nend\n");
    KXActions actions;
    actions.bind("jump", KXInputOfKey(KXKeySpace));
    actions.save(controls.c_str());
    const std::pair<const char*, std::function<int()>> rows[] = {
        {"picture", [&] { return KXTexture(picture.c_str()).size().width > 0; }},
        {"image", [&] { return KXImage().load(picture.c_str()); }},
        {"map", [&] { return KXMap().load(PROJECT "/examples/assets/meadow.tmj"); }},
        {"theme", [&] { return KXUIThemeFile().load(theme.c_str()); }},
        {"cache", [&] { return KXTextureCacheLoad(picture.c_str()) != nullptr; }},
        {"actions", [&] { return KXActions().load(controls.c_str()); }},
        {"settings", [&] { return KXSettings().load(settings.c_str()) == KXSettingsLoaded; }},
        {"sound", [&] { return !KXSound(sound.c_str()).isPlaying(); }},
        {"music", [&] { return (KXMusic(sound.c_str()).stop(), -1); }},
        {"replay", [&] { return KXBeginReplay(recording.c_str()); }},
    };
    refuseEach(memory, "folder", [&] { return KXDirectoryContents(folder.path().c_str()).size() == 6; });
    for (const auto& [name, load] : rows)
        for (long* kind : {&memory, &calls})
            refuseEach(
                *kind, name, load, [] { return ""; }, [] { (KXTextureCachePurge(), KXEndRecording()); });
}

TEST_F(Refusals, MessagesArriveOrTheConnectionEnds) {
    const auto exchange = [] {
        KXNetworkServer server("127.0.0.1", 0, 2, 0, 2);
        KXNetworkClient client;
        KXNetworkBuffer message("hello", 5);
        if (!client.connect("127.0.0.1", portOf(server)))
            throw std::bad_alloc();
        const int id = acceptOne(server);
        if (client.send(&message) < 1 || !nextFrom(server, id) ||
            server.sendBufferToClient(id, &message) < 1 || !nextFrom(client))
            throw std::bad_alloc();
        return -1;
    };
    // While the game polls, with all limits.
    const auto inTurns = [] {
        KXNetworkServer server("127.0.0.1", 0, 2, 0, 2);
        KXNetworkClient client;
        server.setLimits(KXNetworkLimitsForStrangers());
        client.setLimits(KXNetworkLimitsForStrangers());
        client.beginConnecting("127.0.0.1", portOf(server));
        KXNetworkBuffer message("hello", 5);
        for (bool sent = false; client.state() <= KXNetworkConnected; SDL_Delay(1)) {
            client.poll();
            server.poll();
            server.checkForIncomingConnections();
            if (client.connected() && !std::exchange(sent, true))
                client.send(&message);
            if (take(server.receiveNext(nullptr)))
                server.sendBufferToClient(0, &message);
            if (take(client.receiveNext()))
                return -1;
        }
        throw std::bad_alloc();
    };
    for (long* kind : {&memory, &calls}) {
        refuseEach(*kind, "messages", exchange);
        refuseEach(*kind, "messages in turns", inTurns);
    }
}

TEST_F(Refusals, WhatTheDriverDeniesIsDrawnOnceItCan) {
    makeDriverRefusable();
    const auto clear = [this] {
        window->setRenderContext();
        KXClear({0, 0, 0, 1});
    };
    const auto texture = [&] {
        const Pixel colors[4] = {red, red, blue, red};
        KXTexture made;
        if (!made._loadFromData(2, 2, 4, GL_RGBA, reinterpret_cast<const char*>(colors)))
            return false;
        made.setRenderContext();
        const bool failed = *KXError();
        if (!failed)
            KXDrawRectFill(rect(0, 0, 1, 1), white);
        made.unsetRenderContext();
        clear();
        if (!failed)
            made.draw(10, 10, 1, 4, 0, 0, 0);
        return !failed;
    };
    // FTGL needs a print to get over a glyph that it was refused.
    const auto again = [&](const std::function<void()>& draw) {
        for (int i = 0; i < 3; ++i) {
            KXClear({0, 0, 0, 1});
            draw();
        }
        return !*KXError();
    };
    const auto writes = [&](KXAliasMode mode) {
        return [&again, mode, file = testFont()] {
            KXFont font(file, mode);
            return again([&] { font.print({10, 30}, white, "Text"); });
        };
    };
    const auto batch = [&] {
        _KXSetCurrentDriver(_KXDriver::Hardware);
        return again([] {
            KXBeginDrawBatch();
            KXDrawRectFill(rect(5, 5, 50, 50), white);
            KXEndDrawBatch();
        });
    };
    const auto seen = [this] { return pixels(); };
    refuseEach(calls, "texture", texture, seen, clear);
    refuseEach(calls, "glyphs", writes(KXAliasModeTexture), seen, clear);
    refuseEach(calls, "outlines", writes(KXAliasModePolygon), seen, clear);
    refuseEach(calls, "batch", batch, seen, clear);
}

TEST_F(Refusals, Widgets) {
    const auto seen = [this](_KXUIWidget& widget) { return picture(widget); };
    const auto drawn = [](_KXUIWidget& made) { return (made.draw(), -1); };

    const auto button = widget<KXUIButton>([](KXUIButton& made) { made.setText(shortText); });
    refuseEach(memory, "caption", button, seen, [](KXUIButton& made) { return made.setText(longText); });

    const auto dialog = widget<KXUIDialogBox>([](KXUIDialogBox& made) { made.setMessage(shortText); });
    refuseEach(memory, "message", dialog, seen,
               [](KXUIDialogBox& made) { return (made.setMessage(longText), -1); });
    refuseEach(memory, "button", dialog, seen,
               [](KXUIDialogBox& made) { return (made.addButton(longText), -1); });

    const auto label = widget<KXUILabel>([](KXUILabel& made) { made.setText(shortText); });
    refuseEach(memory, "label", label, seen, [](KXUILabel& made) { return (made.setText(longText), -1); });
    const auto box = widget<KXUICheckBox>([](KXUICheckBox& made) { made.setText(shortText); });
    refuseEach(memory, "box", box, seen, [](KXUICheckBox& made) { return (made.setText(longText), -1); });
    KXUIButton inPanel;
    const auto panel = widget<KXUIPanel>([](KXUIPanel&) {});
    const auto count = [](KXUIPanel& made) { return std::to_string(made.count()); };
    refuseEach(memory, "panel", panel, count, [&](KXUIPanel& made) { return (made.add(inPanel), -1); });
    const auto group = widget<KXUIRadioGroup>([](KXUIRadioGroup& made) { made.add(shortText); });
    refuseEach(memory, "option", group, seen, [](KXUIRadioGroup& made) { return (made.add(longText), -1); });
    const auto bar = widget<KXUIProgressBar>([](KXUIProgressBar& made) { made.setSize({90, 20}); });
    refuseEach(memory, "bar", bar, seen, [](KXUIProgressBar& made) { return (made.setText(longText), -1); });
    refuseEach(
        memory, "tooltip", box,
        [](KXUICheckBox& made) { return std::string(made.tooltip() ? made.tooltip() : ""); },
        [](KXUICheckBox& made) { return (made.setTooltip(longText), -1); });

    const auto entry = widget<KXUITextEntry>([](KXUITextEntry& made) {
        made.setText(shortText);
        made.focus();
    });
    const auto all = [this](KXUITextEntry& made) {
        return picture(made) + made.text() + std::to_string(made.length()) + std::to_string(made.cursor());
    };
    refuseEach(memory, "entry", entry, all, [](KXUITextEntry& made) { return (made.setText(longText), -1); });
    refuseEach(memory, "drawing", entry, seen, drawn);

    const auto area = widget<KXUITextArea>([](KXUITextArea& made) {
        made.setSize({100, 60});
        made.setShowsLineNumbers(-1);
        made.setText("one\ntwo");
        made.select(5, 2);
        made.insert("hree"); // which can be taken back
    });
    const auto written = [this](KXUITextArea& made) {
        return picture(made) + made.text() + std::to_string(made.length()) + std::to_string(made.cursor());
    };
    static const std::string manyLines = std::string(9000, 'x') + "\n" + std::string(9000, 'y');
    refuseEach(memory, "area", area, written,
               [](KXUITextArea& made) { return (made.setText(manyLines.c_str()), -1); });
    refuseEach(memory, "lines", area, written,
               [](KXUITextArea& made) { return (made.insert(manyLines.c_str()), -1); });
    refuseEach(memory, "undoing", area, written, [](KXUITextArea& made) { return made.undo(); });
    refuseEach(memory, "drawn area", area, written, drawn);

    const auto menus = widget<KXUIMenuBar>([](KXUIMenuBar& made) {
        made.addMenu("", {{shortText, 1}});
        made.setSize({90, -1});
    });
    refuseEach(memory, "menus", menus, seen, [](KXUIMenuBar& made) {
        return (made.addMenu(longText, {{longText, 2}, {longText, 3}}), -1);
    });
    const auto entries = [](KXUIMenuBar& made) {
        std::string known; // of those that have been added, all or none
        for (int id = 1; id < 5; ++id)
            known += made.isEntryEnabled(id) ? "y" : "n";
        return known;
    };
    refuseEach(memory, "entries", menus, entries, [](KXUIMenuBar& made) {
        return made.addSubMenu(1, {{longText, 2, {KXKeyA, KXUICommand}}, {longText, 3}});
    });
    const auto tree = widget<KXUITreeList>([](KXUITreeList& made) {
        made.setSize({100, 60});
        made.add(0, shortText);
        made.add(1, shortText);
    });
    refuseEach(memory, "node", tree, seen, [](KXUITreeList& made) { return made.add(0, longText) ? -1 : 0; });
    refuseEach(memory, "opened node", tree, seen, [](KXUITreeList& made) { return made.setSelectedNode(2); });
    const auto table = widget<KXUITable>([](KXUITable& made) {
        made.setSize({100, 60});
        made.addColumn({shortText, 60});
        made.addRow({shortText});
        made.addRow({"a"});
    });
    refuseEach(memory, "column", table, seen, [](KXUITable& made) {
        return made.addColumn({longText, 40}) ? -1 : 0;
    });
    refuseEach(memory, "table row", table, seen,
               [](KXUITable& made) { return made.addRow({longText}) ? -1 : 0; });
    refuseEach(memory, "sorting", table, seen, [](KXUITable& made) { return made.sortBy(0); });

    const auto list = widget<KXUIListBox>([](KXUIListBox& made) { made.add(shortText); });
    refuseEach(memory, "row", list, seen, [](KXUIListBox& made) { return made.add(longText) == 1; });
    refuseEach(memory, "other row", list, seen, [](KXUIListBox& made) { return made.rename(0, longText); });
    refuseEach(memory, "list", list, seen, drawn);

    const auto choice = widget<KXUIDropDown>([](KXUIDropDown& made) {
        made.add(shortText);
        made.setSelectedIndex(0);
    });
    refuseEach(memory, "choice", choice, seen, [](KXUIDropDown& made) { return made.add(longText) == 1; });
    const auto number = widget<KXUISpinBox>([](KXUISpinBox& made) { made.setNumber(7); });
    refuseEach(memory, "number", number, seen, [](KXUISpinBox& made) {
        KXUISpinBoxOptions options;
        options.from = 9;
        options.suffix = longText;
        return (made.setOptions(options), -1);
    });
    const auto tabs = widget<KXUITabBar>([](KXUITabBar& made) { made.add(shortText); });
    refuseEach(memory, "tab", tabs, seen, [](KXUITabBar& made) { return made.insert(0, longText) == 0; });
    refuseEach(memory, "tabs", tabs, seen, drawn);
    const auto toast = widget<KXUIToast>([](KXUIToast& made) { made.show(shortText); });
    refuseEach(memory, "message", toast, seen, [](KXUIToast& made) { return made.show(longText) == 1; });
    const auto picker = widget<KXUIColorPicker>([](KXUIColorPicker& made) { made.setShowsOpacity(-1); });
    refuseEach(memory, "picker", picker, seen, drawn);

    const auto menu = widget<KXUIMenu>([](KXUIMenu& made) {
        made.addDivider();
        made.click(KXMouseLeft);
        made.poll();
    });
    refuseEach(memory, "item", menu, seen, [](KXUIMenu& made) {
        made.addMenuItemWithName(longText, nullptr, nullptr);
        return -1;
    });
    refuseEach(memory, "sub-menu", menu, seen, [](KXUIMenu& made) {
        auto added = std::make_unique<KXUIMenu>(longText);
        made.addSubMenu(added.get());
        return added.release() != nullptr;
    });

    const auto browser = widget<KXUIFileBrowser>([this](KXUIFileBrowser& made) {
        made.setRect({0, 0}, {320, 200});
        made.show(KXUIFileBrowserModeOpen, folder.path().c_str());
        made.draw();
    });
    folder.write(longText);
    refuseEach(memory, "browser", browser, seen,
               [](KXUIFileBrowser& made) { return (made.setFolder("/"), -1); });
}
} // namespace
