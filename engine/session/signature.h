// Signatures: keyed hashes that tell whether a text is what somebody with the key signed.
//
// What is hashed is the canonical form of a text: its kind, a zero byte, its name, a zero byte,
// and the text with CR LF and CR as LF and without blanks and line breaks at its end. Method 1 is
// HMAC-SHA-256 (RFC 2104) with the key over the canonical form, method 2 the answer of the
// context's authentication function to the SHA-256 of the canonical form. Signatures are written
// as 64 lower-case hexadecimal digits.
#pragma once

#include "engine/base/bytes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tarvo::engine::session {

enum class SignatureMethod : std::uint32_t { None = 0, Key = 1, Authentication = 2 };

// Fills the answer to a challenge, both of 32 bytes; returns whether it can. Empty: there is none.
using Authenticator = std::function<bool(ByteSpan challenge, std::span<std::uint8_t> answer)>;

struct Signer {
    std::uint32_t method = 0;
    Bytes key;
    Authenticator authenticator;
};

// Throws Failure(Argument) for an unknown method or one that lacks its key, Failure(State) where
// the authentication function is missing or refuses.
std::string makeSignature(const Signer& signer, std::string_view kind, std::string_view name,
                          std::string_view text);
// Whether it is the signature; takes as long for a wrong one as for the right one.
bool checkSignature(const Signer& signer, std::string_view kind, std::string_view name,
                    std::string_view text, std::string_view signature);

}  // namespace tarvo::engine::session
