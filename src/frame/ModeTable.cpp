// What the link does in each mode, when the antenna speaks and when it stays silent.

#include "diagnostics/Diagnostics.h"
#include "flash/Phases.h"
#include "frame/SessionState.h"
#include "link/Mode.h"

using enum Received;

// clang-format off
const Mode ModeTable[ModeCount] = {
    // mode               on a reply        when the wait runs out  text is
    {STATE_NONE,           nullptr,          nullptr,                Raw},
    {STATE_WAIT_RESET,     OnSignOnReply,    FailFlash,              Keep},
    {STATE_WAIT_ERASE,     OnEraseReply,     FailFlash,              Keep},
    {STATE_SEND_BLOCKS,    OnBlockReply,     FailFlash,              Raw},
    {STATE_SEND_LINES,     OnLineReply,      ResendLine,             Raw},
    {STATE_FLASH_FAILED,   nullptr,          ReportFlashFailure,     Raw},
    {STATE_SHUTDOWN,       nullptr,          ShutDownFinished,       Raw},
    {STATE_GET_VERSIONS,   OnVersionReply,   SendNextVersionQuery,   Keep},
    {STATE_IDLE,           nullptr,          SendQueuedText,         Show},
    {STATE_POSTFLASH,      OnPostflashReply, NextPostflashStep,      Keep},
    {STATE_UNUSED,         nullptr,          nullptr,                Raw},
    {STATE_PREFLASH,       OnPreflashReply,  NextPreflashStep,       Keep},
    {STATE_RF_BOOT_BLOCKS, OnBootBlockReply, FailFlash,              Raw},
    {STATE_BOOT_UPGRADE,   OnUpgradeReply,   FailFlash,              Raw},
    {STATE_SAT_LIST_A,     OnSatListReply,   EndSatListWait,         Keep},
    {STATE_SAT_LIST_B,     OnSatListReply,   EndSatListWait,         Keep},
    {STATE_SCRIPT,         nullptr,          SendScriptLine,         Keep},
    {STATE_WAIT_PORT_BACK, OnPortBackReply,  TestPortBack,           Keep},
    {STATE_BAUD_SELECT,    OnBaudQuestion,   nullptr,                Keep},
    {STATE_SEND_RF7,       OnRecordReply,    ResendLine,             Raw},
    {STATE_FPGA_REV,       OnFPGARevReply,   AskFPGARevAgain,        Keep},
    {STATE_BAPI_REV,       OnBAPIRevReply,   AskBAPIRevAgain,        Keep},
};
// clang-format on
