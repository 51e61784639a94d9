#pragma once

#include <cstdio>
#include <map>
#include <string>
#include <vector>

union SDL_Event;

/// Plays the part of a person: feeds what a file says to the platform, so that the game reads it like any
/// other input, and takes screenshots on the way.
///
/// A line is a step's number and what happens there: "down KEY", "up KEY" (a platform key name, such as
/// Left), "move X Y", "press", "release" (of the left mouse button), "wheel N", "text TEXT", "shot FILE" for
/// a screenshot, or "quit". '#' begins a comment.
class Script {
public:
    /// Reads a file. False, with a line on standard error, if it cannot be read or understood.
    bool load(const std::string& path);
    /// The last step that something happens in.
    int length() const { return _acts.empty() ? 0 : _acts.rbegin()->first; }
    /// Hands the input of a step to the platform; the game reads it when the step begins.
    void feed(int step, unsigned windowID) const;
    /// The screenshots to take after a step.
    std::vector<std::string> shots(int step) const;

private:
    std::multimap<int, std::string> _acts;
};

/// Writes what a person does as such a file.
class Recorder {
public:
    explicit Recorder(const std::string& path);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    bool isOpen() const { return _file != nullptr; }
    /// From now on events belong to this step.
    void setStep(int step) { _step = step; }
    void write(const SDL_Event& event);

private:
    FILE* _file;
    int _step = 0;
};
