#include "engine/report/png.h"

#include "engine/base/bytes.h"
#include "engine/base/error.h"

#include <openssl/evp.h>
#include <png.h>

#include <new>
#include <string_view>

namespace tarvo::engine::report {

static_assert(sizeof(Colour) == 4);  // as PNG_FORMAT_RGBA has it

std::string dataUri(const Image& image) {
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = image.width();
    header.height = image.height();
    header.format = PNG_FORMAT_RGBA;
    Bytes png(PNG_IMAGE_PNG_SIZE_MAX(header));
    png_alloc_size_t size = png.size();
    if (!png_image_write_to_memory(&header, png.data(), &size, 0, image.pixels(), 0, nullptr)) {
        // That memory ran out is told by words only: "Out of memory", "insufficient memory".
        if (std::string_view(header.message).ends_with("emory"))
            throw std::bad_alloc();
        throw Failure(ErrorCode::Internal, "A picture for the report could not be written.",
                      header.message);
    }
    std::string text((size + 2) / 3 * 4 + 1, '\0');  // with the zero that the encoder ends with
    text.resize(static_cast<std::size_t>(EVP_EncodeBlock(
        reinterpret_cast<unsigned char*>(text.data()), png.data(), static_cast<int>(size))));
    return "data:image/png;base64," + text;
}

}  // namespace tarvo::engine::report
