#pragma once

// How the two statistics windows reach each other. Each of these loads the window that it speaks to, if need
// be.

namespace orvane {

// Writes the statistics and the pool into the counter's grid and sheet.
void ShowStatGrid();

// Puts the generator on the screen.
void ShowStatsGenerator();

// A random selection in the generator, with all that follows from it.
void RandomizeSelection();

}  // namespace orvane
