// What leaves for the antenna: plain text, without frames and without a queue. A sender arms its wait itself.

#include "display/Display.h"
#include "link/SerialPortIO.h"
#include "persistence/INIUtilities.h"
#include "platform/Computer.h"
#include "platform/SerialControl.h"
#include "session/Session.h"
#include "text/Text.h"

void SendLine(const std::string& text)
{
    constexpr std::size_t pieceLength = 8;
    if (text.empty()) return;
    const std::int32_t delay = Session.plan->paced ? text::ToLong(GetSetting(SETTING_TRANSMIT_DELAY)) : 0;
    for (std::size_t at = 0; at < text.size(); at += pieceLength) {
        if (delay > 0) computer->Sleep(delay);
        // What the antenna says while a line is on its way belongs to no line.
        MSComm1->Input();
        MSComm1->Output(text.substr(at, pieceLength));
    }
}

void SendCommandLine(const std::string& command) { SendCommand(command, "\r"); }

void SendCommand(const std::string& command, const std::string& lineEnd)
{
    const bool dry = IsSettingTrue(SETTING_DRY_RUN);
    if (!dry) MSComm1->Output(command + lineEnd);
    ShowAllCommsTextUpdate((dry ? "==>(DryRunMode, not sent) " : "==>") + command + "\r\n");
}
