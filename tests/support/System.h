#pragma once

#include <string>

// What tests ask of the system they run on; a file for each says how.

/// Sets a variable of the process's environment, for the library and for programs that are started.
void setVariable(const char* name, const std::string& value);
void unsetVariable(const char* name);

/// SDL's video driver that tests open their windows with, unless the environment names another.
extern const char* const videoDriverOfTests;

/// How many files, connections and the like the process has open.
long openFiles();

/// Whether a file, by its descriptor, is handed on to programs that are started.
bool isInherited(int descriptor);

/// How many bytes malloc() has given out; always the same where sanitizers have one of their own.
std::size_t memoryInUse();

/// Sets the time zone, as TZ names it.
void setTimeZone(const char* zone);

/// A program that was started beside the test.
struct RunningProgram;

/// Starts a program whose both channels are read.
/// @param command as a shell takes it, with its arguments. For what runs on Windows as well: variables, one
/// program and its arguments, quoted where they need be, and `> FILE`.
RunningProgram* startProgram(const std::string& folder, const std::string& command);
/// Waits for its end, and frees it.
/// @param output what it wrote is appended.
/// @return -1 if it crashed.
int endOfProgram(RunningProgram* program, std::string& output);
