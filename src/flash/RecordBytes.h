#pragma once
// Pairs of hexadecimal digits as bytes; what records of both kinds are made of.

#include <cstdint>
#include <string_view>
#include <vector>

/// The bytes of `digits`, of either case. Raises std::invalid_argument for half a byte or another character.
std::vector<std::uint8_t> RecordBytes(std::string_view digits);

/// The number that bytes from `first` on make, the highest first.
std::uint32_t RecordNumber(const std::vector<std::uint8_t>& bytes, std::size_t first, std::size_t count);
