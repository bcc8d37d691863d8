// What the link does in each mode, when the antenna speaks and when it stays silent.

#include "diagnostics/Diagnostics.h"
#include "flash/Phases.h"
#include "link/Mode.h"
#include "session/Session.h"

using enum Phase;
using enum Received;

// clang-format off
const Mode ModeTable[ModeCount] = {
    // mode               phase      on a reply        when the wait runs out  text is
    {STATE_NONE,           Free,      nullptr,          nullptr,                Raw},
    {STATE_WAIT_RESET,     Resetting, OnSignOnReply,    FailFlash,              Keep},
    {STATE_WAIT_ERASE,     Erasing,   OnEraseReply,     FailFlash,              Keep},
    {STATE_SEND_BLOCKS,    Writing,   OnBlockReply,     OnBlockTimeOut,         Raw},
    {STATE_SEND_LINES,     Writing,   OnLineReply,      OnLineTimeOut,          Raw},
    {STATE_FLASH_FAILED,   Failed,    nullptr,          ReportFlashFailure,     Raw},
    {STATE_SHUTDOWN,       Free,      nullptr,          ShutDownFinished,       Raw},
    {STATE_GET_VERSIONS,   Reading,   OnVersionReply,   SendNextVersionQuery,   Keep},
    {STATE_IDLE,           Free,      nullptr,          SendQueuedText,         Show},
    {STATE_POSTFLASH,      Restoring, OnPostflashReply, NextPostflashStep,      Keep},
    {STATE_READ_BACK,      Restoring, OnReadBackReply,  NextReadBackStep,       Keep},
    {STATE_PREFLASH,       Saving,    OnPreflashReply,  NextPreflashStep,       Keep},
    {STATE_RF_BOOT_BLOCKS, Writing,   OnBootBlockReply, FailFlash,              Raw},
    {STATE_BOOT_UPGRADE,   Writing,   OnUpgradeReply,   OnUpgradeTimeOut,       Raw},
    {STATE_SAT_LIST_A,     Talking,   OnSatListReply,   EndSatListWait,         Keep},
    {STATE_SAT_LIST_B,     Talking,   OnSatListReply,   EndSatListWait,         Keep},
    {STATE_SCRIPT,         Talking,   nullptr,          SendScriptLine,         Keep},
    {STATE_WAIT_PORT_BACK, Restoring, OnPortBackReply,  TestPortBack,           Keep},
    {STATE_BAUD_SELECT,    Erasing,   OnBaudQuestion,   FailFlash,              Keep},
    {STATE_SEND_RF7,       Writing,   OnRecordReply,    OnRecordTimeOut,        Raw},
    {STATE_FPGA_REV,       Reading,   OnFPGARevReply,   AskFPGARevAgain,        Keep},
    {STATE_BAPI_REV,       Reading,   OnBAPIRevReply,   AskBAPIRevAgain,        Keep},
};
// clang-format on
