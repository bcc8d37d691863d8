#pragma once
// Keys of the toolkit, as the core knows them.

#include <Qt>

/// The number that the core knows a key by (F1 is 112, the arrows 37 to 40, letters their own code); 0 for keys that it
/// has no use for.
int KeyCode(int key);
