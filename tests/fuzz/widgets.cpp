// Widgets that lie over each other, under any events.

#include "Fuzz.h"

#include <Kobaltrix/Kobaltrix.h>

#include <SDL.h>

static SDL_Keycode keyOf(FuzzBytes& bytes) {
    constexpr SDL_Keycode keys[] = {SDLK_LEFT,   SDLK_RIGHT,     SDLK_UP,    SDLK_DOWN,   SDLK_HOME,
                                    SDLK_END,    SDLK_PAGEUP,    SDLK_TAB,   SDLK_RETURN, SDLK_ESCAPE,
                                    SDLK_DELETE, SDLK_BACKSPACE, SDLK_LCTRL, SDLK_LSHIFT, SDLK_a,
                                    SDLK_c,      SDLK_v,         SDLK_x,     SDLK_z,      SDLK_SPACE};
    return keys[bytes.byte() % (sizeof keys / sizeof *keys)];
}

static void pushEvent(FuzzBytes& bytes, unsigned window) {
    SDL_Event event = {};
    switch (bytes.byte() % 6) {
    case 0:
    case 1: {
        constexpr SDL_Keycode ofMenus[] = {SDLK_F10, SDLK_LALT, SDLK_f, SDLK_DOWN};
        const int how = bytes.byte();
        const bool down = how & 1;
        event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.windowID = window;
        event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.sym = how & 0x80 ? ofMenus[how >> 1 & 3] : keyOf(bytes);
        event.key.keysym.scancode = SDL_GetScancodeFromKey(event.key.keysym.sym);
        break;
    }
    case 2: {
        event.type = SDL_TEXTINPUT;
        event.text.windowID = window;
        const std::string text = bytes.text();
        SDL_strlcpy(event.text.text, text.c_str(), sizeof event.text.text);
        break;
    }
    case 3:
        event.type = SDL_MOUSEMOTION;
        event.motion.windowID = window;
        event.motion.x = bytes.byte() * 2;
        event.motion.y = bytes.byte();
        break;
    case 4: {
        const bool down = bytes.byte() & 1;
        event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.windowID = window;
        event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.x = bytes.byte() * 2;
        event.button.y = bytes.byte();
        break;
    }
    default:
        event.type = SDL_MOUSEWHEEL;
        event.wheel.windowID = window;
        event.wheel.y = bytes.number<std::int8_t>();
    }
    SDL_PushEvent(&event);
}

void fuzz(FuzzBytes bytes) {
    KXWindow& window = fuzzWindow();
    KXUISetGlobalFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", KXAliasModeTexture, 12, KXZeroPoint);
    KXUIListBox list;
    list.setOrigin({10, 30});
    list.setSize({120, 90});
    KXUITextEntry entry;
    entry.setOrigin({100, 60});
    entry.setSize({120, 20});
    KXUITextArea area;
    area.setRect({160, 90}, {90, 60});
    area.setWraps(-1);
    KXUITreeList tree;
    tree.setRect({20, 130}, {120, 60});
    KXUITable table;
    table.setRect({150, 130}, {120, 60});
    table.addColumn({"One", 80});
    table.addColumn({"Two", 80, KXTextAlignRight, -1});
    for (int row = 0; row < 20; ++row) {
        tree.add(row / 2, "node");
        table.addRow({"row", KXTempString("%d", row * 7919 % 20)});
    }
    KXUIMenu menu("Menu"), *const under = new KXUIMenu("Under");
    under->addMenuItemWithName(
        "Clear", [](void* of) { static_cast<KXUIListBox*>(of)->clear(); }, &list);
    menu.addMenuItemWithName(
        "Add", [](void* to) { static_cast<KXUIListBox*>(to)->add("another"); }, &list);
    menu.addSubMenu(under);
    menu.layout();
    KXUIMenuBar bar;
    KXUIContextMenu context;
    bar.addMenu("&File",
                {{"&New", 1, {KXKeyA, KXUICommand}}, {"&More", 2}, {}, {"Mark", 3, {}, KXUIMenuEntryCheck}});
    bar.addSubMenu(2, {{"deep", 4}});
    bar.addMenu("&Edit", {{"Copy", 5, {KXKeyDelete}}, {"Menu", 6}});
    bar.setRect({0, 220}, {300, -1});
    context.add({{"one", 1}, {"two", 2}});
    KXUIDropDown choice;
    KXUISpinBox number;
    KXUINumberSlider slider;
    KXUITabBar tabs;
    KXUISplitPanel split;
    KXUIColorPicker picker;
    KXUIToast toast;
    KXUIPanel panel;
    KXUIToastOptions undo;
    undo.action = "Undo";
    _KXUIWidget* const controls[] = {&choice, &number, &slider, &tabs, &split, &picker, &toast};
    for (int i = 0; i < 7; ++i) {
        controls[i]->setRect({150 + 60 * static_cast<float>(i % 3), 10 + 50 * static_cast<float>(i / 3)},
                             {90, 60});
        panel.add(*controls[i]);
    }
    panel.add(context);
    panel.add(bar);
    tabs.setClosable(-1);
    tabs.setReorderable(-1);
    for (int i = 0; i < 12; ++i) {
        choice.add(KXTempString("choice %d", i));
        tabs.add(KXTempString("tab %d", i));
    }
    list.setMultipleSelection(bytes.byte() & 1);
    for (int row = 0; row < 20; ++row)
        list.add(KXTempString("row %d", row * 7919 % 20));
    KXUnsetKeys();
    KXResetLogicLoop();
    while (!bytes.atEnd()) {
        for (int events = bytes.byte() % 4; events >= 0; --events)
            pushEvent(bytes, window.id());
        KXResetLogicLoop(); // a step is owed
        KXPreLogicLoop();
        if (KXLogicLoop()) {
            list.poll();
            entry.poll();
            area.poll();
            tree.poll();
            table.poll();
            menu.poll();
            panel.poll();
            if (bar.chosen() == 1)
                bar.addSubMenu(2, {{"deeper", 4}});
            else if (bar.chosen() == 4)
                bar.removeEntries(2);
            else if (bar.chosen() == 5)
                context.open(KXMousePoint);
            bar.setEntryEnabled(2, list.selectedIndex() % 2);
            require(!bar.isOpen() || !context.isOpen(), "one menu is open");
            if (toast.count() == 0)
                toast.show("A message", undo);
            if (const int closed = tabs.closedIndex(); closed != -1)
                tabs.remove(closed);
            require(number.number() >= 0 && number.number() <= 100, "a number is one of its options");
            require(slider.number() >= 0 && slider.number() <= 1, "so is a slider's");
            require(tabs.count() == 0 || tabs.selectedIndex() >= 0, "a tab is chosen");
            require(split.share() >= 0 && split.share() <= 1, "a share is one");
            require(list.selectedIndex() < list.count(), "what is selected is a row");
            for (int row = -1, last; (last = row, row = list.nextSelectedIndex(row)) != -1;)
                require(row > last && row < list.count() && list.isSelected(row), "so is each of several");
            require(entry.cursor() <= entry.length(), "the cursor is in the text");
            require(area.charactersBefore(area.positionOf(area.cursor())) == area.cursor(),
                    "and in its line");
            require(tree.selectedNode() == 0 || tree.text(tree.selectedNode()), "what is selected is a node");
            require(table.selectedRow() == 0 || table.isSelected(table.selectedRow()), "and a row");
            KXLogicUpdate();
        }
        list.draw();
        entry.draw();
        area.draw();
        tree.draw();
        table.draw();
        menu.draw();
        panel.draw();
        KXPostLogicLoop();
    }
    entry.unfocus();
    area.unfocus();
}
