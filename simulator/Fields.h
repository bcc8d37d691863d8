#pragma once
// The words of a command as the antenna's software takes them apart.

#include <optional>
#include <string>
#include <vector>

namespace sim {

using Fields = std::vector<std::string>;

std::string Upper(std::string text);

/// Without blanks and tabs at both ends.
std::string Trim(const std::string& text);

/// What stands between the commas, each trimmed; a comma at the end has an empty field behind it.
Fields Split(const std::string& text);

/// The number that a text is, nothing around it allowed.
std::optional<double> Number(const std::string& text);

/// With one decimal.
std::string Tenths(double value);

/// What the software says to values that a command doesn't take.
std::string Refusal(const std::string& word);

}  // namespace sim
