#pragma once
// The three dialogs that ask for the antenna model, and the one that offers the satellite library.

#include <string>

#include "session/FlashPlan.h"

/// Gives the controls of the modal choosers their handlers.
void ConnectModelChoosers();

/// Asks for the antenna model: the file that it needs, or nothing when it isn't in the list.
std::string AskForModel(ModelList list);

/// Offers the satellite library to a JARL system. True when it is wanted.
bool AskForLibraryUpgrade();
