#pragma once
// SHA-256 as FIPS 180-4 defines it.

#include <string>
#include <string_view>

/// The digest of `bytes` as 64 lower-case hexadecimal digits.
std::string Sha256(std::string_view bytes);
