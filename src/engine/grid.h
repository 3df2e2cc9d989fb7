// The numbered screen grid that narrows down a point for the real cursor.
#pragma once

namespace zirvel {

// Covers the monitor of the real cursor with a 4 x 4 grid and puts the
// cursor at its centre; hides the element hints first.
void ShowGrid();
// Makes cell `cell` the new area (2 x 2 from then on) and centres the cursor
// on it; numbers outside the grid are ignored.
void NarrowGrid(int cell);
// Hides the grid window. Element hints share it, so their picture goes too,
// but they stay "shown" for the numbers.
void HideGrid();

}  // namespace zirvel
