#pragma once

#include <memory>

/// One screen of the game: it lives as long as it is shown.
class Scene {
public:
    virtual ~Scene() = default;
    Scene() = default;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// One logic step, 60 a second: reads input and moves what moves. @return the scene to go on with, null
    /// to stay.
    virtual std::unique_ptr<Scene> step() = 0;
    /// Draws into the window, which is the target and has been cleared.
    virtual void draw() = 0;
    /// Whether letters are typed into something now, so that they switch nothing.
    virtual bool takesLetters() { return false; }
};
