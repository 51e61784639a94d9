#include "StartScene.h"

#include "HostScene.h"
#include "JoinScene.h"
#include "TitleScene.h"
#include "WidgetsScene.h"

std::unique_ptr<Scene> startScene(App& app) {
    if (app.options.widgets)
        return std::make_unique<WidgetsScene>(app);
    if (app.options.hostPort)
        return std::make_unique<HostScene>(app, app.options.hostPort);
    if (!app.options.join.empty())
        return std::make_unique<JoinScene>(app);
    return std::make_unique<TitleScene>(app);
}
