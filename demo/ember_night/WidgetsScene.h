#pragma once

#include "App.h"
#include "widgets/FirePanel.h"
#include "widgets/MenuBar.h"
#include "widgets/NightList.h"
#include "widgets/TextPanel.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

/// Every widget of the library on one screen, and a line that says what the last one did.
class WidgetsScene : public Scene {
public:
    explicit WidgetsScene(App& app);
    std::unique_ptr<Scene> step() override;
    void draw() override;
    bool takesLetters() override;

private:
    void stepTab();
    bool stepWidgets();
    bool obey(Command command);
    bool setGlow(KXColor color, const char* name);
    void ask(const char* message, std::initializer_list<const char*> answers);
    void askAboutFire();
    void stepDialog(bool enter, bool escape);
    void browse(KXUIFileBrowserMode mode);
    void stepBrowser();
    void leaveFields();
    void tell(const std::string& news);
    void drawNews();

    App& _app;
    MenuBar _menus;
    FirePanel _fire;
    TextPanel _texts;
    NightList _nights;
    KXUIButton _back;
    KXUIFileBrowser _browser;
    std::unique_ptr<KXUIDialogBox> _dialog; ///< While something is asked.
    std::vector<std::string> _answers;      ///< The captions of its buttons.
    bool _asksAboutFire = false;
    std::unique_ptr<Scene> _shows; ///< Instead of the title, when this one is left.
    bool _waits = false;           ///< Until the mouse button is let go that ended the file browser.
    KXUILabel _news;               ///< What the last widget did.
};
