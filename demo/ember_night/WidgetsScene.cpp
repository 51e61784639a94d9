#include "WidgetsScene.h"

#include "Paths.h"

#include "TitleScene.h"
#include "ToolsScene.h"

#include <algorithm>
#include <cstdio>

WidgetsScene::WidgetsScene(App& app) : _app(app), _fire(app), _texts(app), _nights(app) {
    KXTextOptions line;
    line.maxLines = 1;
    line.verticalAlign = KXTextMiddle;
    line.plain = -1; // with what the user has typed
    _news.setOptions(line);
    _news.setTextColor(Style::gold);
    _news.setText("Try the widgets: this line says what the last one did.");
    _news.setRect({28, 454}, {672, 23});
    _back.setText("Back");
    _back.setOrigin({784 - _back.rect().size.width, 454});
    _browser.setRect({160, 70}, {480, 340});
    _browser.setBackgroundColor(Style::faded(Style::panel, 1));
    _browser.setTrackColor(Style::night);
    _browser.setKnobColor(Style::wood);
}

bool WidgetsScene::takesLetters() {
    return KXUIFocusedTextEntry() || _nights.list().hasFocus() || _browser.isShown();
}

// Also a line on standard output, for whoever drives the screen from another program.
void WidgetsScene::tell(const std::string& news) {
    if (news.empty())
        return;
    _news.setText(news.c_str());
    std::puts(news.c_str());
    std::fflush(stdout);
}

std::unique_ptr<Scene> WidgetsScene::step() {
    _fire.animate();
    const bool escape = KXKeyWentDown(KXKeyEscape) > 0, enter = KXKeyWentDown(KXKeyReturn) > 0,
               tab = KXKeyWentDown(KXKeyTab) > 0;
    _waits = _waits && KXMouse(KXMouseLeft);
    bool leaves = false;
    if (_dialog) {
        stepDialog(enter, escape);
    } else if (_browser.isShown()) {
        stepBrowser();
    } else if (_menus.isOpen()) {
        if (escape)
            _menus.close();
        leaves = obey(_menus.step());
    } else if (!_waits) {
        leaves = escape && !KXUIFocusedTextEntry();
        if (tab)
            stepTab();
        leaves |= stepWidgets();
    }
    if (!leaves)
        return nullptr;
    _app.audio.play(Effect::Click);
    if (_shows)
        return std::move(_shows);
    return std::make_unique<TitleScene>(_app);
}

// The entries hand the keyboard on among themselves; the list comes after the last one and before the first.
void WidgetsScene::stepTab() {
    if (KXKeyHeld(KXKeyLeftAlt) || KXKeyHeld(KXKeyRightAlt))
        return;
    const bool backwards = KXKeyHeld(KXKeyLeftShift) || KXKeyHeld(KXKeyRightShift);
    const KXUITextEntry* const focused = KXUIFocusedTextEntry();
    KXUIListBox& list = _nights.list();
    if (focused && focused == (backwards ? &_texts.first() : &_texts.last())) {
        list.setFocus(-1);
    } else if (!focused) {
        const bool toList = backwards && !list.hasFocus();
        KXUITextEntry& entry = backwards ? _texts.last() : _texts.first();
        if (toList) {
            list.setFocus(-1);
        } else {
            entry.focus();
            entry.selectAll();
        }
    }
}

// What every widget does. @return whether the screen is left.
bool WidgetsScene::stepWidgets() {
    const Command command = _menus.step();
    if (_menus.isOpen())
        return false;
    tell(_texts.step());
    tell(_nights.step());
    tell(_fire.step());
    if (_fire.asksQuestion())
        askAboutFire();
    if (_fire.asksToOpen())
        browse(KXUIFileBrowserModeOpen);
    if (_fire.asksToSave())
        browse(KXUIFileBrowserModeSave);
    const bool back = _back.clicked(KXMouseLeft) != 0;
    return obey(command) || back;
}

// @return whether the screen is left.
bool WidgetsScene::obey(Command command) {
    constexpr KXColor none = {0, 0, 0, 0};
    // While something else is held by the mouse nothing opens.
    if (command == Command::None || KXMouse(KXMouseLeft))
        return false;
    switch (command) {
    case Command::Open:
    case Command::Save:
        browse(command == Command::Open ? KXUIFileBrowserModeOpen : KXUIFileBrowserModeSave);
        return false;
    case Command::Stoke:
    case Command::Damp: {
        const bool stokes = command == Command::Stoke;
        _fire.setHeight(std::clamp(_fire.height() + (stokes ? 10 : -10), 0, 100));
        tell(
            KXTempString("Menu: %s, so that the slider is at %d", stokes ? "Stoke" : "Damp", _fire.height()));
        return false;
    }
    case Command::About:
        ask("This screen shows every widget of Kobaltrix.", {"Good"});
        return false;
    case Command::Dark:
        return setGlow(none, "None");
    case Command::Gold:
        return setGlow(Style::gold, "Gold");
    case Command::Rose:
        return setGlow(Style::rose, "Rose");
    case Command::Teal:
        return setGlow(Style::teal, "Teal");
    case Command::Tools:
        _shows = std::make_unique<ToolsScene>(_app);
        return true;
    default:
        return true;
    }
}

bool WidgetsScene::setGlow(KXColor color, const char* name) {
    _fire.setGlow(color);
    tell(KXTempString("Menu: Fire, Glow, %s", name));
    return false;
}

void WidgetsScene::askAboutFire() {
    _asksAboutFire = true;
    ask("Shall the fire go out?", {"Put it out", "Keep it"});
}

// The last of the answers is also Escape's.
void WidgetsScene::ask(const char* message, std::initializer_list<const char*> answers) {
    constexpr int padding = 16;
    leaveFields();
    _dialog = std::make_unique<KXUIDialogBox>();
    _dialog->setPadding(padding);
    _dialog->setBackgroundColor(Style::panel.r, Style::panel.g, Style::panel.b, 1);
    _dialog->setTextColor(Style::paper.r, Style::paper.g, Style::paper.b, 1);
    _dialog->setBorderColor(Style::gold.r, Style::gold.g, Style::gold.b, 1);
    _dialog->setMessage(message);
    for (const char* answer : answers) {
        _dialog->addButton(answer);
        _answers.emplace_back(answer);
    }
    const float spare = Style::windowSize.width - _dialog->rect().size.width;
    _dialog->setOrigin({static_cast<float>(static_cast<int>(spare / 2)), 190});
}

void WidgetsScene::stepDialog(bool enter, bool escape) {
    if (enter)
        _dialog->button(0)->click(0);
    if (escape)
        _dialog->button(static_cast<int>(_answers.size()) - 1)->click(0);
    _dialog->poll();
    const int answer = _dialog->buttonIndexClicked();
    if (answer < 0)
        return;
    tell("Dialog box: " + _answers[static_cast<std::size_t>(answer)]);
    if (_asksAboutFire && answer == 0)
        _fire.putOut();
    _asksAboutFire = false;
    _answers.clear();
    _dialog.reset();
}

void WidgetsScene::browse(KXUIFileBrowserMode mode) {
    leaveFields();
    _browser.show(mode, nullptr, mode == KXUIFileBrowserModeSave ? "night.txt" : nullptr);
}

// Nothing is read or written: this screen only shows how a file is chosen.
void WidgetsScene::stepBrowser() {
    if (!_browser.poll())
        return;
    _waits = KXMouse(KXMouseLeft) != 0; // a double click ends only after the browser is gone
    if (const char* path = _browser.path())
        tell("File browser: " + textOf(pathOf(path).filename()) + " was chosen");
    else
        tell("File browser: cancelled");
}

void WidgetsScene::leaveFields() {
    if (KXUITextEntry* entry = KXUIFocusedTextEntry())
        entry->unfocus();
    _nights.list().setFocus(0);
}

void WidgetsScene::drawNews() {
    constexpr KXRect line = {{16, 454}, {696, 23}};
    KXDrawRectFill(line, Style::panel);
    KXDrawRect(line, Style::ink);
    _news.draw();
}

void WidgetsScene::draw() {
    drawBackdrop(_app);
    _fire.draw();
    _texts.draw();
    _nights.draw();
    drawNews();
    _back.draw();
    _menus.draw();
    if (_dialog || _browser.isShown())
        KXDrawRectFill({{0, 0}, Style::windowSize}, Style::faded(Style::ink, 0.6f));
    _browser.draw();
    if (_dialog)
        _dialog->draw();
}
