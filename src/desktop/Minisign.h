#pragma once
// Signatures as the program minisign makes them.

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

/// Why a file isn't taken, in words for the user.
struct SignatureError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct PublicKey {
    std::array<std::uint8_t, 8> id{};
    std::array<std::uint8_t, 32> key{};
};

/// The keys of a file in minisign's format: a comment and a key, once or several times. Raises SignatureError when
/// there is none, or something else.
std::vector<PublicKey> ReadPublicKeys(std::string_view text);

/// Returns when `signature` is a whole prehashed signature of `bytes`, its trusted comment included, by one of the
/// keys. Raises SignatureError otherwise.
void VerifySignature(std::string_view bytes, std::string_view signature, const std::vector<PublicKey>& keys);
