#pragma once

#include "core/dispatch/EventDispatch.h"
#include "input/StepInput.h"

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KXTestUser.h>

#include "support/System.h"
#include "support/TemporaryFolder.h"

#include <memory>

/// Every kind of widget below each other, in every state beside each other: as it is, under the pointer,
/// held, with the keyboard, disabled; with what opens, opened.
class EveryState {
public:
    static constexpr KXSize size = {690, 1112};

    explicit EveryState(KXWindow& window) : _hands(window.id()) {}

    /// Draws all of it into the window in a theme.
    void draw(const KXUITheme& theme) {
        KXUISetTheme(theme);
        KXClear(theme.palette.panel);
        _top = 8;
        add<KXUILabel>(16, 16, [](KXUILabel& label) { label.setText("A label"); });
        add<KXUIButton>(20, 20, [](KXUIButton& button) { button.setText("Button"); });
        add<KXUIToggleButton>(20, 20, [](KXUIToggleButton& button) {
            button.setText("On");
            button.setState(KXUIToggleButtonStateOn);
        });
        add<PictureButton>(24, 24, [](PictureButton&) {});
        add<KXUICheckBox>(18, 18, [](KXUICheckBox& box) {
            box.setText("Checked");
            box.setChecked(-1);
        });
        add<KXUIRadioGroup>(36, 36, [](KXUIRadioGroup& group) {
            group.add("First");
            group.add("Second");
            group.setSelectedIndex(1);
        });
        add<KXUISlider>(18, 18, [](KXUISlider& slider) { slider.setSize({110, 18}); });
        add<KXUINumberSlider>(18, 18, [](KXUINumberSlider& slider) { slider.setNumber(30); });
        add<KXUIProgressBar>(18, 18, [](KXUIProgressBar& bar) {
            bar.setText("Loading");
            bar.setProgress(0.4f);
        });
        add<KXUITextEntry>(20, 20, [](KXUITextEntry& entry) { entry.setPlaceholder("Your name"); });
        add<KXUISpinBox>(20, 20, [](KXUISpinBox& box) { box.setNumber(12); });
        add<KXUIDropDown>(20, 62, [](KXUIDropDown& box) {
            box.add("Low");
            box.add("High");
            box.setSelectedIndex(1);
        });
        add<KXUIListBox>(52, 52, [](KXUIListBox& list) {
            for (const char* row : {"Ground", "Plants", "Walls", "Owls"})
                list.add(row);
            list.setSelectedIndex(1);
        });
        add<KXUITextArea>(52, 52, [](KXUITextArea& area) {
            area.setShowsLineNumbers(-1);
            area.setText("two lines\nof text\nor more");
        });
        add<KXUITreeList>(52, 52, [](KXUITreeList& tree) {
            const int land = tree.add(0, "Land");
            tree.add(land, "Hill");
            tree.setOpen(land, -1);
            tree.setSelectedNode(land);
            tree.add(0, "Sea");
        });
        add<KXUITable>(52, 52, [](KXUITable& table) {
            table.addColumn({"Name", 60});
            KXUITableColumn count;
            count.title = "Count";
            count.width = 50;
            count.align = KXTextAlignRight;
            table.addColumn(count);
            table.addRow({"Owls", "3"});
            table.setSelectedRow(table.addRow({"Moths", "120"}));
        });
        add<KXUITabBar>(22, 22, [](KXUITabBar& bar) {
            bar.add("Map");
            bar.add("Script");
        });
        add<KXUISplitPanel>(40, 40, [](KXUISplitPanel&) {});
        add<KXUIMenuBar>(20, 86, [](KXUIMenuBar& bar) {
            bar.addMenu("File", {{"New", 1, {KXKeyN, KXUICommand}},
                                 {"Grid", 2, {}, KXUIMenuEntryCheck, -1},
                                 {},
                                 {"Quit", 3, {}, KXUIMenuEntryPlain, 0, 0}});
            bar.addMenu("Edit", {{"Undo", 4}});
        });
        add<TitledMenu>(0, 22, [](KXUIMenu& menu) { menu.addMenuItemWithName("Entry", nullptr, nullptr); });
        add<KXUIDialogBox>(0, 56, [](KXUIDialogBox& box) {
            box.setPadding(6);
            box.setMessage("Save?");
            box.addButton("Yes");
            box.addButton("No");
        });
        add<TwoButtons>(32, 32, [](TwoButtons&) {});
        add<KXUIToast>(34, 34, [](KXUIToast& toast) { toast.show("Saved"); });
        add<KXUIColorPicker>(110, 110, [](KXUIColorPicker& picker) {
            picker.setColor({0.9f, 0.5f, 0.2f, 1});
        });
    }

    /// The same for the file browser, which wants more room, but for its path.
    static void drawBrowser(const KXUITheme& theme) {
        KXUISetTheme(theme);
        const TemporaryFolder folder;
        setVariable("TZ", "UTC");
        for (const char* name : {"moths.txt", "night.png"})
            std::filesystem::last_write_time(_KXFilePath(folder.write(name)),
                                             std::filesystem::file_time_type());
        KXUIFileBrowser browser;
        browser.setRect({8, 8}, {390, 280}); // too narrow for places, which differ
        browser.show(KXUIFileBrowserModeSave, folder.path().c_str(), "night.txt");
        KXClear(theme.palette.track);
        browser.draw();
        KXDrawRectFill({{9, 9}, {388, 32}}, theme.palette.track);
    }

private:
    struct PictureButton : KXUIImageButton {
        PictureButton() { setTexture(&texture); }
        KXTexture texture{KXImage(16, 8, {0.3f, 0.7f, 0.3f, 1})};
    };
    struct TwoButtons : KXUIScrollPanel {
        TwoButtons() {
            for (KXUIButton& button : buttons) {
                button.setText("In a panel");
                column.add(button);
                KXUIPanel::add(button);
            }
            setLayout(&column);
        }
        KXUIButton buttons[2];
        KXUILayout column{KXUIColumn};
    };
    struct TitledMenu : KXUIMenu {
        TitledMenu() : KXUIMenu("Menu") {}
    };
    enum State { Normal, Hovered, Pressed, Focused, Disabled, StateCount };

    /// A kind of widget. @param height of each; 0 for its own. @param room from its top on, with what it
    /// opens.
    template<class Kind, class Prepare>
    void add(float height, float room, Prepare prepare) {
        for (int state = Normal; state < StateCount; ++state) {
            const auto widget = std::make_unique<Kind>();
            prepare(*widget);
            const KXPoint corner = {8 + 136 * static_cast<float>(state), _top};
            widget->setOrigin(corner);
            if (height > 0) {
                widget->setSize({120, height});
                widget->setOrigin(corner); // by which sliders place their tracks
            }
            drawOne(*widget, static_cast<State>(state));
        }
        _top += room + 8;
    }

    void drawOne(_KXUIWidget& widget, State state) {
        KXUIPanel panel;
        panel.add(widget);
        const KXPoint corner = widget.rect().origin, at = {corner.x + 12, corner.y + 8};
        _hands.move(state == Hovered || state == Pressed ? at : KXPoint{-5, -5});
        if (state == Pressed)
            _hands.hold(KXMouseLeft);
        step(panel);
        if (state == Focused)
            panel.focus(widget);
        widget.setEnabled(state != Disabled);
        step(panel);
        panel.draw();
        _hands.release(KXMouseLeft);
        _hands.move({-5, -5});
        step(panel);
    }

    static void step(KXUIPanel& panel) {
        _KXBeginInputStep();
        _KXDispatchEvents();
        panel.poll();
    }

    KXTestUser _hands;
    float _top = 0;
};
