#pragma once
// Which satellites a main board knows.

#include <string>

namespace sim {

/// Answers "SATLISTA" with the satellites that may come first, and "SATLISTB,DSS_101" with those that may come behind
/// that one: "SATLISTB,DSS_119,DSS_110". Empty when the command is neither; a first satellite that it doesn't know is
/// refused.
std::string AnswerSatelliteList(const std::string& command);

}  // namespace sim
