// PLY, PTX, E57 and texts of numbers, told by their content: everything that an import reads of
// them before it has a database to write to. The checksums of pages are mended, so that they stop
// nothing.
#include "exchange/opensource.h"
#include "tests/exchange/e57builder.h"
#include "tests/fuzz/folder.h"
#include "tests/fuzz/readsource.h"

#include <string_view>

namespace {

bool isPaged(const std::uint8_t* data, std::size_t size) {
    return std::string_view(reinterpret_cast<const char*>(data), size).starts_with("ASTM-E57");
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maximum);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maximum, unsigned) {
    size = LLVMFuzzerMutate(data, size, maximum);
    if (isPaged(data, size)) {
        tarvo::exchange::tests::mendPages(data, size);
    }
    return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file = tarvo::fuzz::folder().write("a", data, size);
    // LAS files have a fuzzer of their own.
    if (size >= 4 && std::string_view(reinterpret_cast<const char*>(data), 4) == "LASF") {
        return 0;
    }
    tarvo::fuzz::readSource([&] { return tarvo::exchange::openSource(file); });
    return 0;
}
