#pragma once
// The road to a flash, as a user goes it.

#include <gtest/gtest.h>

#include <iostream>
#include <memory>

#include "tests/desktop/AntennaProcess.h"
#include "tests/desktop/ProgramHome.h"
#include "tests/desktop/WizardProcess.h"

class RealWindow : public testing::Test {
protected:
    void TearDown() override
    {
        if (HasFailure()) std::cerr << "BNL.LOG:\n" << home.Bytes("BNL.LOG") << std::endl;
    }

    enum class Speed { OfTheLine, Fast };

    void StartAntenna(int board, Speed speed = Speed::Fast)
    {
        antenna = std::make_unique<AntennaProcess>(board, home.AntennaLink(), speed == Speed::Fast);
    }
    void StartWizard() { wizard = std::make_unique<WizardProcess>(home.Path("")); }

    /// Enter in the command line makes the antenna answer, so that the port counts as ready.
    void AwaitPortReady()
    {
        wizard->WaitForText("lblCommPortStatus", "Waiting on COM7");
        wizard->Click("txtSendCmd");
        wizard->PressKey("Return");
        wizard->WaitForText("lblCommPortStatus", "COM port: COM7 ready");
    }

    /// From "Welcome!" to STEP_4 with a BRIX, whose flash needs neither versions nor parameters.
    void ChooseBrix()
    {
        wizard->Click("cmdNav_2");
        wizard->Click("cmdNav_2");
        wizard->Focus("cboBoardToFlash");
        wizard->PressKey("B");
        wizard->WaitForText("cboBoardToFlash", "BRIX Antenna Main board");
        wizard->Click("cmdNav_2");
        wizard->Click("optSerial");
        wizard->Click("cmdNav_2");
        wizard->WaitForText("lblFlashFile", "F61195A.HEX");
    }

    void FlashBrixUntilFirstLine()
    {
        ChooseBrix();
        wizard->Click("cmdNav_2");
        antenna->WaitFor("1 lines taken", 40);
    }

    ProgramHome home;
    std::unique_ptr<AntennaProcess> antenna;
    std::unique_ptr<WizardProcess> wizard;
};
