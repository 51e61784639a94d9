#pragma once

/// The page of keys and mouse that the studio shows.
const char* helpText();
