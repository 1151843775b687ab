#include "engine/report/png.h"

#include "engine/base/error.h"

#include <openssl/evp.h>

#include <stdexcept>

namespace tarvo::engine::report {

namespace {

std::vector<std::uint8_t> written(const drawing::Image& image) {
    try {
        return drawing::pngOf(image);
    } catch (const std::runtime_error& error) {
        throw Failure(ErrorCode::Internal, "A picture for the report could not be written.",
                      error.what());
    }
}

}  // namespace

std::string dataUri(const drawing::Image& image) {
    const std::vector<std::uint8_t> png = written(image);
    std::string text((png.size() + 2) / 3 * 4 + 1,
                     '\0');  // with the zero that the encoder ends with
    text.resize(static_cast<std::size_t>(EVP_EncodeBlock(
        reinterpret_cast<unsigned char*>(text.data()), png.data(), static_cast<int>(png.size()))));
    return "data:image/png;base64," + text;
}

}  // namespace tarvo::engine::report
