#pragma once

#include "App.h"
#include "ButtonColumn.h"
#include "WorldView.h"

#include <optional>

/// A night, for one or two players at this machine, or with a guest over the network.
class LevelScene : public Scene {
public:
    LevelScene(App& app, int players);
    /// @param server at which a guest has arrived, with that id.
    LevelScene(App& app, std::unique_ptr<KXNetworkServer> server, int guest);
    std::unique_ptr<Scene> step() override;
    void draw() override;
    const Picture& picture() const { return _world.picture(); }

private:
    void stepWorld();
    Input guestInput();
    void tellGuest();
    void setPaused(bool paused);
    std::unique_ptr<Scene> stepPause();

    App& _app;
    World _world;
    WorldView _view;
    int _players;
    std::unique_ptr<KXNetworkServer> _server; ///< Null without a guest.
    int _guest = -1;
    Input _guestInput;
    std::optional<ButtonColumn> _pause; ///< While the game is paused.
    int _stepsOver = 0;
};

/// What is said over a night that has ended.
void drawEnding(const Picture& picture);
/// One step after the end of a night. In the first the log, and whoever started the game without a display,
/// is told how it ended. @param alone whether nobody else needs to be told yet. @return true when the end was
/// looked at for long enough.
bool stepEnding(App& app, const Picture& picture, int stepsOver, bool alone);
