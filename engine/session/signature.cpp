#include "engine/session/signature.h"

#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <new>

namespace tarvo::engine::session {

namespace {

using Digest = std::array<std::uint8_t, 32>;

// With LF line ends, without blanks and line breaks at the end.
std::string canonicalText(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            result += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            result += '\n';
    }
    while (!result.empty() &&
           (result.back() == '\n' || result.back() == ' ' || result.back() == '\t'))
        result.pop_back();
    return result;
}

std::string canonicalForm(const SignedText& text, SignatureForm form, std::size_t keyLength) {
    std::string result;
    if (form == SignatureForm::First) {
        (result += text.kind) += '\0';
        (result += text.name) += '\0';
        return result + canonicalText(text.text);
    }
    (result += "signature 2") += '\0';
    const auto add = [&result](std::string_view part) {
        (result += std::to_string(part.size())) += ':';
        result += part;
    };
    add(std::to_string(keyLength));
    add(text.kind);
    for (const std::string& place : text.bound)
        add(place);
    add(canonicalText(text.text));
    return result;
}

[[noreturn]] void failHash() {
    // Of what the library of algorithms tells the first names the cause, unless memory ran out:
    // that it may tell in any place, or not at all.
    const unsigned long cause = ERR_get_error();
    bool outOfMemory = cause == 0;
    for (unsigned long error = cause; error != 0; error = ERR_get_error())
        outOfMemory |= ERR_GET_REASON(error) == ERR_R_MALLOC_FAILURE;
    if (outOfMemory)
        throw std::bad_alloc();
    throw Failure(ErrorCode::Internal, "A signature can't be computed.",
                  ERR_error_string(cause, nullptr));
}

Digest hashWithKey(const Bytes& key, const std::string& form) {
    if (key.empty())
        throw Failure(ErrorCode::Argument, "The signature key is missing.",
                      "Signature method 1 needs a key of at least one byte.");
    Digest digest;
    unsigned size = 0;
    if (!HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()),
              reinterpret_cast<const unsigned char*>(form.data()), form.size(), digest.data(),
              &size) ||
        size != digest.size())
        failHash();
    return digest;
}

Digest askAuthenticator(const Authenticator& authenticator, const std::string& form) {
    if (!authenticator)
        throw Failure(ErrorCode::State, "There is no authentication function.",
                      "Signature method 2 needs one: set it on the context first.");
    Digest challenge;
    unsigned size = 0;
    if (EVP_Digest(form.data(), form.size(), challenge.data(), &size, EVP_sha256(), nullptr) != 1 ||
        size != challenge.size())
        failHash();
    Digest answer{};
    if (!authenticator(challenge, answer))
        throw Failure(ErrorCode::State, "The authentication function gave no answer.");
    return answer;
}

}  // namespace

std::string makeSignature(const Signer& signer, const SignedText& text, SignatureForm which) {
    const std::string form = canonicalForm(text, which, signer.key.size());
    Digest digest;
    switch (static_cast<SignatureMethod>(signer.method)) {
        case SignatureMethod::Key:
            digest = hashWithKey(signer.key, form);
            break;
        case SignatureMethod::Authentication:
            digest = askAuthenticator(signer.authenticator, form);
            break;
        default:
            throw Failure(ErrorCode::Argument,
                          "The signature method " + std::to_string(signer.method) + " is unknown.",
                          "1 signs with a key, 2 with the authentication function.");
    }
    std::string text16;
    for (const std::uint8_t byte : digest) {
        text16 += "0123456789abcdef"[byte >> 4];
        text16 += "0123456789abcdef"[byte & 15];
    }
    return text16;
}

bool checkSignature(const Signer& signer, const SignedText& text, SignatureForm form,
                    std::string_view signature) {
    const std::string right = makeSignature(signer, text, form);
    std::string given(signature);
    for (char& c : given)
        if (c >= 'A' && c <= 'F')
            c = static_cast<char>(c - 'A' + 'a');
    return given.size() == right.size() &&
           CRYPTO_memcmp(given.data(), right.data(), right.size()) == 0;
}

}  // namespace tarvo::engine::session
