#pragma once

#include "Canvas.h"

// What the game's pictures are drawn by.
Canvas drawSky();
Canvas drawPeaks();
Canvas drawHills();
Canvas drawWoods();
Canvas drawTiles();
Canvas drawTufts();
Canvas drawHut();
Canvas drawSign();
Canvas drawBasket();
Canvas drawLogo();

// The sheets of its sprites.
Canvas drawKidSheet();
Canvas drawBeetleSheet();
Canvas drawCrowSheet();
Canvas drawBellSheet();
Canvas drawFlowerSheet();
