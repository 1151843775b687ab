#include "copy/outputplace.h"

#include "files/identity.h"
#include "qrb/error.h"

namespace tarvo::copy {

void checkOutputPlace(const qrb::Context& context, const std::string& fileName,
                      const std::vector<std::string>& reads) {
    const char* const advice = "Give the output another name.";
    for (const std::string& read : reads)
        if (files::sameFile(fileName, read))
            throw qrb::ErrorImpl(
                0, "The output can't go to \"" + fileName + "\": that file is being read.", advice);
    if (context.databaseFileTypeCheck(fileName))
        throw qrb::ErrorImpl(
            0, "The output can't go to \"" + fileName + "\": that file is a database.", advice);
}

}  // namespace tarvo::copy
