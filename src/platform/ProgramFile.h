#pragma once

#include <string>

/// The path of the file that this process runs, without links; empty where the system does not tell.
std::string _KXProgramFile();
