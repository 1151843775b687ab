// Signatures: keyed hashes that tell whether a text is what somebody with the key signed.
//
// What is hashed is the canonical form of a text. It begins with "signature 2" and a zero byte;
// then, each as its length in decimal digits, a colon and its bytes: the length of the key in
// decimal digits, the kind, what the text is bound to, and the text with CR LF and CR as LF and
// without blanks and line breaks at its end. The form of the first release is the kind, a zero
// byte, the name, a zero byte and the text; there a key and the same with zeros behind are alike.
// Method 1 is HMAC-SHA-256 (RFC 2104) with the key over the canonical form, method 2 the answer of
// the context's authentication function to the SHA-256 of the canonical form. Signatures are
// written as 64 lower-case hexadecimal digits.
#pragma once

#include "engine/base/bytes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::session {

enum class SignatureMethod : std::uint32_t { None = 0, Key = 1, Authentication = 2 };

// Fills the answer to a challenge, both of 32 bytes; returns whether it can. Empty: there is none.
using Authenticator = std::function<bool(ByteSpan challenge, std::span<std::uint8_t> answer)>;

struct Signer {
    std::uint32_t method = 0;
    Bytes key;
    Authenticator authenticator;
};

// A text, and what it is signed as.
struct SignedText {
    std::string_view kind;
    std::vector<std::string> bound;  // where it stands; moved elsewhere, the text is not signed
    std::string_view text;
    std::string_view name;  // of the first release's form
};
enum class SignatureForm { First, Second };

// Throws Failure(Argument) for an unknown method or one that lacks its key, Failure(State) where
// the authentication function is missing or refuses.
std::string makeSignature(const Signer& signer, const SignedText& text,
                          SignatureForm form = SignatureForm::Second);
// Whether it is the signature; takes as long for a wrong one as for the right one.
bool checkSignature(const Signer& signer, const SignedText& text, SignatureForm form,
                    std::string_view signature);

}  // namespace tarvo::engine::session
