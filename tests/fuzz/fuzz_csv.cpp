// Texts of separated values: everything that an import reads of them before it has a database to
// write to.
#include "exchange/csv/source.h"
#include "tests/fuzz/folder.h"
#include "tests/fuzz/readsource.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file = tarvo::fuzz::folder().write("a.csv", data, size);
    tarvo::fuzz::readSource([&] { return std::make_unique<tarvo::exchange::csv::CsvSource>(file); });
    return 0;
}
