// LAS files: everything that an import reads of them before it has a database to write to.
// Compressed ones are fuzz_laz's.
#include "exchange/las/source.h"
#include "tests/fuzz/folder.h"
#include "tests/fuzz/readsource.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 104 && (data[104] & 0xc0) == 0x80)
        return 0;
    const std::string file = tarvo::fuzz::folder().write("a.las", data, size);
    tarvo::fuzz::readSource(
        [&] { return std::make_unique<tarvo::exchange::las::LasSource>(file); });
    return 0;
}
