#pragma once
// What the system knows about antennas: the configuration file, which board is at hand, its parameters.

#include <optional>
#include <string>
#include <vector>

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

/// The text that the reply to a command must hold, for the board at hand; empty: any reply will do.
std::string ExpectedReplyFor(const std::string& command);

/// Mode 11: judges the text gathered since the last pre-flash command went out. True when it answers the command: what
/// it tells is stored, the text is consumed and bReplySeen set. False: more text is needed, nothing has changed.
bool CapturePreflashReply();

/// The plan's post-flash commands, written so that they restore what was captured.
std::vector<std::string> BuildUploadList();

/// The post-flash commands of the row as a person has to enter them, one to a line, each line ended by CR LF: with
/// placeholders for the values, "SATINSTALL,<SATA>,<SATB>". Empty when the row has none.
std::string PostFlashCmdsForUser();

/// The current name of a satellite that older software called `old`; `old` itself when it isn't in the table.
std::string SatNameNew(const std::string& old);
