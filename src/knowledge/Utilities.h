#pragma once
// What the system knows about antennas: the configuration file, which board is at hand, its parameters.

#include <string>
#include <vector>

// --- the flash configuration file --------------------------------------------------------------------------------

/// Reads FLASHCFG.TXT into the session's tables, rows of the group of iBoardType only; at most once while its flag
/// stands. 0: the tables are in place; 1: the file isn't there.
int ReadFlashConfig();

/// Handles one keyword line: stores into row `row` of AntennaTable or into the common texts and lists. A line of
/// another form is dropped; a keyword without its field raises std::out_of_range.
void ParseConfigLine(const std::string& line, int row);

/// Called after a new board choice. The file is loaded again only after the first call of a run; that is on purpose.
void ResetFlashConfig();

/// A "$" line split into its commands, trimmed, the keyword left out, with an empty entry behind the last one.
std::vector<std::string> CommandsOf(const std::string& line);

// --- which board is it -------------------------------------------------------------------------------------------

/// The family of an RF version reply.
bool IsRF6Family(const std::string& version);  // boards of type 20
bool IsRF7Family(const std::string& version);  // boards of type 21
bool IsRF5Family(const std::string& version);
bool HoldsVersionWord(const std::string& version);

/// The path of a flash file as it is shown and opened: its newest revision when the family has one.
std::string ResolveFlashFile(const std::string& name);

/// Fills the flash plan of the session: the row, sign-on, commands, files, and writes it on the form. STEP_4's work.
void ResolveBoard();

/// Mode 7: the reply to a version query. What isn't complete stays in sCommBuffer and is looked at again with more
/// text.
void ParseVersionReply();

/// Modes 20 and 21: the reply to "FPGARev", which asks for "BAPIRev" next, and the reply to that, which ends the
/// reading.
void ParseFPGARev();
void ParseBAPIRev();

// --- parameters --------------------------------------------------------------------------------------------------

/// The text that the reply to a command must hold, for the board at hand; empty: any reply will do.
std::string ExpectedReplyFor(const std::string& command);

/// Mode 11: judges the text gathered since the last pre-flash command went out. True when it answers the command: what
/// it tells is stored, the text is consumed and bReplySeen set. False: more text is needed, nothing has changed.
bool CapturePreflashReply();

/// Rewrites sPostflashCmds so that it restores what was captured.
void BuildUploadList();

/// The post-flash commands of the row as a person has to enter them, one to a line, each line ended by CR LF: with
/// placeholders for the values, "SATINSTALL,<SATA>,<SATB>". Empty when the row has none.
std::string PostFlashCmdsForUser();

/// The current name of a satellite that older software called `old`; `old` itself when it isn't in the table.
std::string SatNameNew(const std::string& old);
