#include "desktop/Minisign.h"

#include <sodium.h>

#include <algorithm>
#include <optional>
#include <string>

namespace {

constexpr std::string_view untrusted = "untrusted comment: ", trusted = "trusted comment: ";

using Bytes = std::vector<unsigned char>;

std::vector<std::string_view> LinesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// Exactly `size` bytes of base64; nothing when it is anything else.
std::optional<Bytes> FromBase64(std::string_view line, std::size_t size)
{
    Bytes bytes(size);
    std::size_t length = 0;
    const bool whole = sodium_base642bin(bytes.data(), bytes.size(), line.data(), line.size(), nullptr, &length,
                                         nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
    if (!whole || length != size) return std::nullopt;
    return bytes;
}

void NeedSodium()
{
    if (sodium_init() < 0) throw SignatureError("signatures can't be verified on this computer");
}

struct Signature {
    std::array<std::uint8_t, 8> id{};
    Bytes ofFile, ofAll;  // the global one is over the signature and the trusted comment
    std::string_view comment;
};

Signature ReadSignature(std::string_view text)
{
    constexpr std::size_t algorithm = 2, id = 8;
    const std::vector<std::string_view> lines = LinesOf(text);
    if (lines.size() != 4 || !lines[0].starts_with(untrusted) || !lines[2].starts_with(trusted))
        throw SignatureError("its signature is no signature of minisign");
    const auto first = FromBase64(lines[1], algorithm + id + crypto_sign_BYTES);
    const auto global = FromBase64(lines[3], crypto_sign_BYTES);
    if (!first || !global) throw SignatureError("its signature is no signature of minisign");
    if ((*first)[0] != 'E' || (*first)[1] != 'D')
        throw SignatureError("its signature is of a kind that isn't accepted (only prehashed ones are)");
    Signature signature;
    std::copy_n(first->begin() + algorithm, id, signature.id.begin());
    signature.ofFile.assign(first->begin() + algorithm + id, first->end());
    signature.ofAll = *global;
    signature.comment = lines[2].substr(trusted.size());
    return signature;
}

bool Fits(const Bytes& signature, const Bytes& message, const PublicKey& key)
{
    return crypto_sign_verify_detached(signature.data(), message.data(), message.size(), key.key.data()) == 0;
}

}  // namespace

std::vector<PublicKey> ReadPublicKeys(std::string_view text)
{
    constexpr std::size_t algorithm = 2;
    NeedSodium();
    std::vector<PublicKey> keys;
    const std::vector<std::string_view> lines = LinesOf(text);
    for (std::size_t at = 0; at + 1 < lines.size(); at += 2) {
        PublicKey key;
        const auto bytes = FromBase64(lines[at + 1], algorithm + key.id.size() + key.key.size());
        if (!lines[at].starts_with(untrusted) || !bytes || (*bytes)[0] != 'E' || (*bytes)[1] != 'd') break;
        std::copy_n(bytes->begin() + algorithm, key.id.size(), key.id.begin());
        std::copy_n(bytes->begin() + algorithm + key.id.size(), key.key.size(), key.key.begin());
        keys.push_back(key);
    }
    if (keys.empty() || keys.size() * 2 != lines.size())
        throw SignatureError("BNLUpdate.pub in the program's directory is no file of public keys");
    return keys;
}

void VerifySignature(std::string_view bytes, std::string_view text, const std::vector<PublicKey>& keys)
{
    NeedSodium();
    const Signature signature = ReadSignature(text);
    const auto key =
        std::find_if(keys.begin(), keys.end(), [&](const PublicKey& one) { return one.id == signature.id; });
    if (key == keys.end()) throw SignatureError("its signature is of another key than those of this program");

    Bytes hash(crypto_generichash_BYTES_MAX);
    crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                       nullptr, 0);
    Bytes all = signature.ofFile;
    all.insert(all.end(), signature.comment.begin(), signature.comment.end());
    if (!Fits(signature.ofFile, hash, *key) || !Fits(signature.ofAll, all, *key))
        throw SignatureError("its signature is wrong: the list, or the signature, was altered");
}
