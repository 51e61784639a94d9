#pragma once

#include <Kobaltrix/KXTypes.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

/// @file
/// What a game remembers from one time to the next, by names, in files that people can read.

/// What a file of settings was found to be.
enum KXSettingsState : int {
    KXSettingsFresh = 0, ///< There is no file yet.
    KXSettingsLoaded,    ///< It was read.
    KXSettingsBroken, ///< What was there was damaged or cut off. It has been put aside, see KXPutFileAside().
    KXSettingsUnreadable ///< What is there cannot be read, nor put aside: save() will not replace it.
};

/// Settings, a saved game or scores: values with names, in a file.
///
///     KXSettings settings;
///     settings.load(KXUserPath("settings.txt"));
///     float volume = settings.number("volume", 0.8f, 0, 1);
///     ...
///     settings.setNumber("volume", volume);
///     settings.save();
///
/// Whoever asks for a value says what it is without one: before the first file, in a file of an older version
/// of the game, and where somebody has written something else into it. Keys that nobody asks for, comments
/// and the order of lines stay as they are when the file is saved, so the settings of a newer version of the
/// game outlive an older one.
///
///     kobaltrix settings 1
///     # Lines that begin so, and empty ones, are left as they are.
///     volume: 0.8
///     full screen: no
///     name: "Ada"
///     best: 310 280 95
///     end
///
/// A value is a number, yes or no, or a text in quotation marks, in which a quotation mark and a backslash
/// have a backslash before them, and "\x0a" is the byte with that number. A key may have any number of them.
/// No key is there twice. The last line tells that the file was not cut off.
///
/// Keys have 1 to 255 bytes, no colon and no control characters, do not begin with '#', and neither begin nor
/// end with a blank. A file has at most 65,536 lines and 4 MiB; larger things are put into a KXSaveFile.
///
/// A recording holds what load() and save() gave. A replay gives it again and neither reads nor writes the
/// player's files.
class KX_API KXSettings {
public:
    KXSettings(); ///< Without any value, and without a file.
    ~KXSettings();
    KXSettings(const KXSettings&) = delete;
    KXSettings& operator=(const KXSettings&) = delete;

    /// Reads a file in the place of what was known. What is damaged or cut off counts as a whole: nothing of
    /// it is read.
    /// @param path where save() will write. Null, as KXUserPath() gives it when it fails, is
    ///   unreadable, and KXError() stays what it was.
    /// @return what was there. If it is broken or unreadable KXError() says why, and where it is now.
    KXSettingsState load(const char* path);
    /// Writes all values to where they were loaded from. The file is there whole or, when that fails, as it
    /// was, as with KXSaveFile.
    /// @return -1; 0 with a text in KXError() if it cannot be written or is too large, and without a load()
    ///   before or one that found something unreadable.
    int save();

    /// -1 if there is such a key, whatever it has, else 0.
    int has(const char* key) const;

    // What a key has: of several values the first, and what comes last if there is none of that kind.

    /// A number. One that is less than @a least or more than @a most becomes the nearest that is not.
    double number(const char* key, double without, double least = std::numeric_limits<double>::lowest(),
                  double most = (std::numeric_limits<double>::max)()) const;
    /// The same, truncated toward zero.
    int integer(const char* key, int without, int least = (std::numeric_limits<int>::min)(),
                int most = (std::numeric_limits<int>::max)()) const;
    /// Whether something is so: -1 for yes, 0 for no, or @a without as it is.
    int flag(const char* key, int without) const;
    /// A text, of any bytes but 0. @param key its name. @param without null counts as empty.
    std::string text(const char* key, const char* without) const;
    /// Two numbers.
    KXPoint point(const char* key, KXPoint without) const;
    /// All of a key's numbers; none if there is no such key.
    std::vector<double> numbers(const char* key) const;
    /// All of a key's texts.
    std::vector<std::string> texts(const char* key) const;

    // Each gives a key what it has from then on, whatever it had, and comes back by its counterpart above as
    // it was, bit by bit. A key that is new stands behind all others in the file.
    // -1; 0 with a text in KXError(), and nothing changes, if the key or a number is none (infinite, or not a
    // number), or if there are too many lines.

    int setNumber(const char* key, double number);  ///< Sets a number.
    int setNumber(const char* key, float number);   ///< Sets a number, in as few digits as a float needs.
    int setNumber(const char* key, int number);     ///< Sets a whole number.
    int setFlag(const char* key, int yes);          ///< Sets whether something is so.
    int setText(const char* key, const char* text); ///< Sets a text; null is an empty one.
    int setPoint(const char* key, KXPoint point);   ///< Sets two numbers.
    int setNumbers(const char* key, const std::vector<double>& numbers);  ///< Sets any number of numbers.
    int setTexts(const char* key, const std::vector<std::string>& texts); ///< Sets any number of texts.

    /// Takes a key out. @return -1, or 0 if there was none.
    int remove(const char* key);
    /// Takes all keys and comments out, as for a new saved game; the file stays until save().
    void clear();

private:
    struct KX_INTERNAL State;
    std::unique_ptr<State> _state;
};
