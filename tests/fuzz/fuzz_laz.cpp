// LAZ files: everything that an import asks of them, of so many points as a fuzzer has time for. A
// few bytes may rightly hold millions of them.
#include "core/error.h"
#include "exchange/las/source.h"
#include "tests/fuzz/folder.h"
#include "tests/fuzz/survive.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tarvo;
    const std::string file = fuzz::folder().write("a.laz", data, size);
    try {
        exchange::las::LasSource source(file);
        (void)source.metaData();
        (void)source.origin();
        const auto read = [&] {
            std::uint64_t count = 0;
            for (int batch = 0; batch < 3; ++batch)
                count += source.next();
            source.rewind();
            return count;
        };
        const std::uint64_t count = read();
        fuzz::require(count <= source.header().pointCount, "no points but those that are told");
        fuzz::require(read() == count, "a source has the same points twice");
    } catch (const core::Failure& failure) {
        fuzz::require(*failure.what() != 0, "failures have words");
    }
    return 0;
}
