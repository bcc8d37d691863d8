#pragma once
// The rooms of the Diagnostics, as ConnectDiagnostics and LoadDiagnostics walk through them.

void ConnectAntennaCommands();
void ConnectNumberFields();

void ConnectPointing();
void LoadPointing();

void ConnectSatInstall();
void LoadSatInstall();

void ConnectScripts();
void LoadScripts();
