#pragma once

#include <string>
#include <string_view>

/// What the command line asks of each of the games.
struct CommonOptions {
    virtual ~CommonOptions() = default;

    bool headless = false;
    bool help = false;
    int frames = 0; ///< Leave after so many; 0 for never.
    std::string screenshot;
    std::string replay; ///< A recording to replay.
    std::string record; ///< Where to record what is played.
    std::string save;   ///< Where settings and scores are kept.

    /// Reads the command line. False, with a line on standard error, if it makes no sense.
    bool read(int argc, char** argv);
    /// Whether nobody but a player would end it.
    virtual bool isEndless() const { return replay.empty() && frames == 0; }
    /// Whether the usual settings count: a recording has to be replayed with those that it was made with, so
    /// both begin without any.
    bool keepsSettings() const { return !headless && replay.empty() && record.empty(); }

protected:
    /// An option of one game that has no value. False if it has none of that name.
    virtual bool readFlag(std::string_view) { return false; }
    /// An option of one game and its value. False if the option is unknown or the value makes no sense.
    virtual bool readValue(std::string_view, const char*) { return false; }
    /// A number from 1 to @a most. False if it is none.
    static bool readCount(std::string_view text, int& count, int most);

private:
    bool readCommon(std::string_view option, const char* value);
};
