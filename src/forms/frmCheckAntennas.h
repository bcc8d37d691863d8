#pragma once
// Which antenna model is the RF board in? Three dialogs that differ in their lists alone.

#include <string>
#include <vector>

#include "forms/Control.h"
#include "session/FlashConfig.h"

/// What one of the dialogs is about.
struct ModelLists {
    const char* form;
    const char* landMobileFrame;
    std::vector<CompatEntry> FlashConfig::*landMobile;
    std::vector<CompatEntry> FlashConfig::*marine;  // null: it has one list only
};
inline constexpr ModelLists ListsForRF{"frmCheckAntennasForRF", "Antenna RF Board ", &FlashConfig::CompatLandMobileRF,
                                       nullptr};
inline constexpr ModelLists ListsForRF6{"frmCheckAntennasForRF6", "Land Mobile Antennas ",
                                        &FlashConfig::CompatLandMobileRF6, &FlashConfig::CompatMarineRF6};
inline constexpr ModelLists ListsForRF6A{"frmCheckAntennasForRF6A", "Land Mobile Antennas ",
                                         &FlashConfig::CompatLandMobileRF6A, &FlashConfig::CompatMarineRF6A};

struct CheckAntennasForm {
    explicit CheckAntennasForm(const ModelLists& lists)
        : Lists(lists),
          Self(lists.form, "Flash the RF Board in Which Antenna Model?"),
          frameLM(Self, "frameLM", lists.landMobileFrame)
    {
    }

    const ModelLists& Lists;
    Form Self;
    Control lblInstructions{Self, "lblInstructions", "Please choose an antenna model from the list below."};
    Control frameLM;
    /// One option for each model of the list, its file in the Tag; the first one is always there.
    ControlArray optLM{Self, "optLM", {""}};
    Control frameMarine{Self, "frameMarine", "Marine Antennas "};
    ControlArray optMarine{Self, "optMarine", {""}};
    Control chkNoneOfThese{Self, "chkNoneOfThese", "The antenna model is not listed above."};
    Control cmdOK{Self, "cmdOK", "&OK"};

    std::string sChosenFile;  // of the model that was chosen; empty: none of these
};

inline CheckAntennasForm frmCheckAntennasForRF{ListsForRF};
inline CheckAntennasForm frmCheckAntennasForRF6{ListsForRF6};
inline CheckAntennasForm frmCheckAntennasForRF6A{ListsForRF6A};
