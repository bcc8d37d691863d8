#pragma once
// Much text at once, as an antenna in debug mode prints it.

#include <cstddef>
#include <string>

namespace sim {

/// Exactly so many bytes of lines that end in CR LF, each with its number ahead and no two alike; the last one is cut
/// where the bytes end. Always the same text.
std::string FloodText(std::size_t bytes);

}  // namespace sim
