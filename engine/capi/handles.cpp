#include "engine/capi/handles.h"

#include "files/error.h"

#include <cstdlib>
#include <cstring>
#include <new>

tarvo::engine::session::Session& qrb_pointcloud::open() const {
    if (!session)
        throw tarvo::engine::Failure(tarvo::engine::ErrorCode::State, "No database is open.");
    return *session;
}

namespace tarvo::engine::capi {

void describeException(qrb_result& error) noexcept {
    try {
        try {
            throw;
        } catch (const Failure& failure) {
            error.code = static_cast<std::int32_t>(failure.code());
            error.text = failure.what();
            error.details = failure.details();
        } catch (const files::FileError& failure) {
            error.code = QRB_ERROR_FILE;
            error.text = failure.what();
            error.details = failure.details();
        } catch (const std::bad_alloc&) {
            error.code = QRB_ERROR_MEMORY;
            error.text = "Out of memory.";
            error.details = "Use a smaller cache size or close other programs.";
        } catch (const std::exception& exception) {
            error.code = QRB_ERROR_INTERNAL;
            error.text = std::string("The library failed: ") + exception.what();
            error.details.clear();
        }
    } catch (...) {
        // Not even the message could be made.
        error.code = QRB_ERROR_MEMORY;
        error.text.clear();
        error.details.clear();
    }
}

void giveText(qrb_context& context, std::string text, const char** out) {
    const char*& slot = given(out, "output");
    context.text = std::move(text);
    slot = context.text.c_str();
}

void giveOwnText(const std::string& text, char** out) {
    char*& slot = given(out, "output");
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy, text.c_str(), text.size() + 1);
    slot = copy;
}

void giveNames(qrb_context& context, const std::vector<std::string>& names, std::uint32_t* count,
               const char** block) {
    given(count, "count");
    std::string all;
    for (const std::string& name : names) {
        all += name;
        all += '\0';
    }
    giveText(context, std::move(all), block);
    *count = static_cast<std::uint32_t>(names.size());
}

session::Progress progressOf(qrb_progress_function progress, void* data) {
    if (!progress)
        return {};
    return [progress, data](int percent) {
        return progress(static_cast<std::uint8_t>(percent), data) != 0;
    };
}

session::Signer signerOf(const qrb_context* context, std::uint32_t method, std::uint32_t key_length,
                         const std::uint8_t* key) {
    session::Signer signer;
    signer.method = method;
    if (key_length > 0) {
        given(key, "key");
        signer.key.assign(key, key + key_length);
    }
    if (context && context->authentication)
        signer.authenticator = [function = context->authentication,
                                data = context->authenticationData](
                                   ByteSpan challenge, std::span<std::uint8_t> answer) {
            return function(challenge.data(), static_cast<std::uint32_t>(challenge.size()),
                            answer.data(), static_cast<std::uint32_t>(answer.size()), data) != 0;
        };
    return signer;
}

query::Scope scopeOf(const std::uint32_t* nodes, std::uint32_t count) {
    query::Scope scope;
    scope.nodes.emplace();
    for (std::uint32_t i = 0; i < count; ++i)
        scope.nodes->insert(given(nodes, "nodes") ? nodes[i] : 0);
    return scope;
}

}  // namespace tarvo::engine::capi
