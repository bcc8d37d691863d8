#pragma once
// What the system knows about antennas: the configuration file, which board is at hand, its parameters.

#include <optional>
#include <string>
#include <vector>

#include "knowledge/ParameterTable.h"
#include "session/Session.h"

// --- the flash configuration file --------------------------------------------------------------------------------

/// Reads FLASHCFG.TXT, all groups. Nothing when the file isn't there. Lines of another form are dropped; a row that
/// can't be read is told by the `problem` of its group; raises Failure, std::out_of_range or std::overflow_error for a
/// file that can't be read or whose common lines lack their field.
std::optional<FlashConfig> ReadFlashConfig();

/// What the configuration says of the boards of that type's group.
const GroupConfig& GroupOf(const FlashConfig& config, int boardType);

/// A "$" line split into its commands, trimmed, the keyword left out, with an empty entry behind the last one.
std::vector<std::string> CommandsOf(const std::string& line);

// --- which board is it -------------------------------------------------------------------------------------------

/// The path of a flash file as it is shown and opened: its newest revision when the family has one.
std::string ResolveFlashFile(const std::string& name);

/// The type of the board at hand ahead of its plan: the row that was picked by hand tells it, or the RF board's reply,
/// or it is what was chosen.
int BoardInHand();

/// The plan of a flash, from what is known; of a board without a row it is not known. The library's answer and the
/// model's are asked for by the plan that it gives without them. Raises what ReadRow raises.
FlashPlan ResolveBoard(const FlashConfig& config, const BoardChoice& choice, const Reading& reading,
                       const PlanAnswers& answers);

/// The board's name as log and messages give it. The lists aren't numbered like the boards, so that type 2 is called
/// "CORA Motor Controller board" here; that is on purpose.
std::string BoardNameForLog();

/// Mode 7: the reply to a version query. What isn't complete stays in sCommBuffer and is looked at again with more
/// text. True when the versions are known.
bool ParseVersionReply();

/// Modes 20 and 21: the reply to "FPGARev", which asks for "BAPIRev" next, and the reply to that, which ends the
/// reading. True when the versions are known.
void ParseFPGARev();
bool ParseBAPIRev();

// --- parameters --------------------------------------------------------------------------------------------------

/// Mode 11: judges the text gathered since the last pre-flash command went out. True when it answers the command: what
/// it tells is stored, the text is consumed and bReplySeen set. A reply counts once. False: more text is needed,
/// nothing has changed.
bool CapturePreflashReply();

/// True for a command of the lists whose parameter the plan's post-flash commands restore.
bool IsRestored(const std::string& command);

/// What was captured, as a command restores it; none when the new software has no name for it.
std::optional<ToldParameter> ToldBefore(const CapturedParameter& parameter);

/// A parameter before and behind the flash.
struct ComparedParameter {
    std::string sName;            // "BIASAZ"
    std::string sBefore, sAfter;  // as the antenna writes them; notTold when it doesn't
    bool bEqual = false;
    std::string sCommand;  // enters the former value; empty: the new software has no name for it
};
inline constexpr const char* notRead = "not read";
inline constexpr const char* notTold = "not told";

/// What was captured, beside what the antenna has told since; then what wasn't read.
std::vector<ComparedParameter> CompareParameters();

/// True for a parameter whose former value is known, and that the antenna doesn't hold now.
bool IsToBeRestored(const ComparedParameter& row);

/// Takes what the text gathered since the query went out tells of a captured parameter. False: nothing yet.
bool TakeReadBackReply(std::size_t parameter);

/// The command that asks the board in hand for its version, and the version that it has told; both empty for a board
/// that isn't asked.
std::string VersionQuery();
std::string VersionBefore();
/// The version in a reply to that command; empty while it isn't complete.
std::string VersionIn(const std::string& reply);

/// Of the upload list, what restores the parameters that differ, with the WAITs behind it.
std::vector<std::string> UploadsOfWhatDiffers();

/// What the antenna's reply makes of a command that was sent behind the flash.
enum class Verdict { Silent, Refused, Confirmed };
Verdict JudgeReply(const std::string& sent, const std::string& reply);

/// The plan's post-flash commands, written so that they restore what was captured.
std::vector<std::string> BuildUploadList();

/// A command as a person has to enter it: with placeholders for the values, "SATINSTALL,<SATA>,<SATB>".
std::string CommandForUser(const std::string& listed);

/// The post-flash commands of the row as a person has to enter them, one to a line, each line ended by CR LF. Empty
/// when the row has none.
std::string PostFlashCmdsForUser();

/// The current name of a satellite that older software called `old`; `old` itself when it isn't in the table.
std::string SatNameNew(const std::string& old);
