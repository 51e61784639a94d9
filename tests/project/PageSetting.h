#pragma once

// What the statements in the pages take for granted. They are compiled, never linked.

#include <Kobaltrix/Kobaltrix.h>
#include <KobaltrixTest/KobaltrixTest.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

extern KXWindow window;
extern KXSprite sprite;
extern KXFont font;
extern KXUIListBox list;
extern KXNetworkServer server;
extern KXNetworkClient client;
extern KXActions actions;
extern KXPoint at;
extern KXColor background;
extern bool paused;
extern KXTest test;
extern KXTestUser user;
extern int score;
