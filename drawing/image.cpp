#include "drawing/image.h"

#include <png.h>

#include <new>
#include <stdexcept>
#include <string_view>

namespace tarvo::drawing {

static_assert(sizeof(Colour) == 4);  // as PNG_FORMAT_RGBA has it

std::vector<std::uint8_t> pngOf(const Image& image) {
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = image.width();
    header.height = image.height();
    header.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_PNG_SIZE_MAX(header));
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(&header, bytes.data(), &size, 0, image.pixels(), 0, nullptr)) {
        // That memory ran out is told by words only: "Out of memory", "insufficient memory".
        if (std::string_view(header.message).ends_with("emory"))
            throw std::bad_alloc();
        throw std::runtime_error(header.message);
    }
    bytes.resize(size);
    return bytes;
}

}  // namespace tarvo::drawing
