#pragma once

#include <KobaltrixTest/KXTestClock.h>
#include <KobaltrixTest/KXTestPicture.h>

#include <string>

/// @file
/// A test of a game: its beginning, its end and its expectations.

/// The library, started for a test: without a display and without sound, unless the environment names other
/// drivers (on Windows, where SDL has no OpenGL without a display, windows open on the desktop), with time
/// that belongs to the test and random numbers that are the same every time. What is saved goes into an empty
/// KXUserFolder() that is gone afterwards, unless the environment names one. To be made before any window,
/// one at a time, by a test's main() or as a member of a test framework's fixture.
class KXTest {
public:
    /// @param executablePath as KXInit() takes it, for games that look for their files beside the program.
    /// Throws std::runtime_error with KXError() if the library does not start.
    explicit KXTest(char* executablePath = nullptr);
    /// Shuts the library down.
    ~KXTest();
    KXTest(const KXTest&) = delete;
    KXTest& operator=(const KXTest&) = delete;

    /// The library's time. It begins with the day at 1,000,000,000 seconds.
    KXTestClock clock;

    // For tests without a framework of their own.

    /// Counts a failure, and prints @a what on the error channel, if something does not hold.
    void expect(bool holds, const char* what);
    /// The same of a comparison, which knows what is wrong.
    void expect(const KXTestResult& result);
    /// What main() returns: 0 if everything held, else 1.
    int result() const { return _failures ? 1 : 0; }

private:
    std::string _userFolder; ///< Empty if the environment names one.
    int _failures = 0;
};
