#pragma once
// What the link does in each mode, as named in loop/ModeTable: on a reply, and when the wait has run out.

#include <string>

// STATE_GET_VERSIONS, STATE_FPGA_REV, STATE_BAPI_REV
void OnVersionReply(const std::string& chunk);
void SendNextVersionQuery();
void OnFPGARevReply(const std::string& chunk);
void AskFPGARevAgain();
void OnBAPIRevReply(const std::string& chunk);
void AskBAPIRevAgain();

// STATE_IDLE, STATE_SCRIPT
void SendQueuedText();
void SendScriptLine();

// STATE_PREFLASH
void OnPreflashReply(const std::string& chunk);
void NextPreflashStep();

// STATE_WAIT_RESET, STATE_WAIT_ERASE
void OnSignOnReply(const std::string& chunk);
void OnEraseReply(const std::string& chunk);

// STATE_SEND_LINES
void OnLineReply(const std::string& chunk);
void OnLineTimeOut();

// STATE_RF_BOOT_BLOCKS, STATE_SEND_BLOCKS, STATE_BOOT_UPGRADE
void OnBootBlockReply(const std::string& chunk);
void OnBlockReply(const std::string& chunk);
void OnBlockTimeOut();
void OnUpgradeReply(const std::string& chunk);
void OnUpgradeTimeOut();

// STATE_BAUD_SELECT, STATE_SEND_RF7
void OnBaudQuestion(const std::string& chunk);
void OnRecordReply(const std::string& chunk);
void OnRecordTimeOut();

// STATE_POSTFLASH, STATE_WAIT_PORT_BACK
void OnPostflashReply(const std::string& chunk);
void NextPostflashStep();
void OnPortBackReply(const std::string& chunk);
void TestPortBack();

// STATE_READ_BACK
void OnReadBackReply(const std::string& chunk);
void NextReadBackStep();
/// The last restore command is through: the antenna is asked what it holds now, or the flash ends here.
void EndOfRestore();

// STATE_FLASH_FAILED, STATE_SHUTDOWN
void FailFlash();
void ReportFlashFailure();
void ShutDownFinished();
