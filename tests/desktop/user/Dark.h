#pragma once
// The colours of a dark desktop, to look at the windows in them.

void DarkenPalette();
