#pragma once

/// Gives the controls of the modal choosers their handlers. What they ask is declared in frame/Wizard.
void ConnectModelChoosers();
