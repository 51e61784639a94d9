#pragma once

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

class KXTestInput;
union SDL_Event;

/// Plays the part of a person: feeds what a file says to the platform, so that the game reads it like any
/// other input, and takes screenshots on the way.
///
/// A line is a step's number and what happens there: "down KEY", "up KEY" (a platform key name, such as
/// Left), "move X Y", "press", "release" (of the left mouse button), "wheel N", "text TEXT", "shot FILE" for
/// a screenshot, or "quit". '#' begins a comment.
class Script {
public:
    using Act = std::function<void(KXTestInput&)>;

    /// Reads a file. False, with a line on standard error, if it cannot be read or understood.
    bool load(const std::string& path);
    /// The last step that something happens in.
    int length() const { return _length; }
    /// Lets the user do what a step is to bring; the game reads it when the step begins.
    void feed(int step, KXTestInput& user) const;
    /// The screenshots to take after a step.
    std::vector<std::string> shots(int step) const;

private:
    std::multimap<int, Act> _acts;
    std::multimap<int, std::string> _shots;
    int _length = 0;
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
