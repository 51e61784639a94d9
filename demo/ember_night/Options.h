#pragma once

#include "CommonOptions.h"

/// What the command line asks for.
struct Options : CommonOptions {
    bool widgets = false;
    int night = 0;    ///< Seconds that a night lasts; 0 for the usual ones.
    int nights = 0;   ///< Leave when so many have ended; 0 for never.
    int hostPort = 0; ///< Wait for a second player at this port; 0 for no.
    std::string join; ///< HOST:PORT to play at.

    static constexpr int secondsRecorded = 12; ///< How long the nights are that come with the game.

    bool isEndless() const override { return CommonOptions::isEndless() && nights == 0; }

protected:
    bool readFlag(std::string_view option) override;
    bool readValue(std::string_view option, const char* value) override;

    friend bool splitAddress(const std::string& address, std::string& host, int& port);
};

/// Splits HOST:PORT. False if it is none.
bool splitAddress(const std::string& address, std::string& host, int& port);

/// Prints how to start the game.
void printUsage();
