#include "diagnostics/Diagnostics.h"

#include "diagnostics/Rooms.h"

void ConnectDiagnostics()
{
    ConnectAntennaCommands();
    ConnectNumberFields();
    ConnectPointing();
    ConnectSatInstall();
    ConnectScripts();
}

void LoadDiagnostics()
{
    LoadSatInstall();
    LoadPointing();
    LoadScripts();
}
