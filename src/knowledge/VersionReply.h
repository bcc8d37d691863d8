#pragma once
// What the antenna says of its software, cut out of the text around it. Nothing here knows the session.

#include <optional>
#include <string>

/// The family of an RF version reply.
bool IsRF6Family(const std::string& version);  // boards of type 20
bool IsRF7Family(const std::string& version);  // boards of type 21
bool IsRF5Family(const std::string& version);
bool HoldsVersionWord(const std::string& version);

// Each gives nothing while the reply isn't complete.

/// The main board's line in the reply to "VERSION": from the last "QEL" to the last line end, the CR included.
std::optional<std::string> MainVersionIn(const std::string& reply);

/// The RF board's line in the reply to "@VER" of a main board: from the last ">RF:" to the last line end.
std::optional<std::string> RFVersionBehindMain(const std::string& reply);

/// The reply of an RF board that is asked by itself: from its first "RF " on, in one line.
std::optional<std::string> RFVersionIn(const std::string& reply);

/// The text between `mark` and the last line end: "FPGA Rev: B" gives "B".
std::optional<std::string> RevisionIn(const std::string& reply, const std::string& mark);

/// The revision letters in a flash file's name, between its six-character family and its extension: "F61340AB.S19"
/// gives "AB".
std::string RevisionOfFile(const std::string& name);
