// The inputs of an import, few of which are open at a time, however many a user names.
#pragma once

#include "exchange/opensource.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvo::exchange {

class SourceOpener {
public:
    // format and columnNames: as for openSource.
    explicit SourceOpener(std::string format = {}, std::vector<std::string> columnNames = {});
    ~SourceOpener();

    // Opens the file for what it tells of its points. All but some of the sources of one opener are
    // closed in between and opened again when their points are read, so they have to be used on one
    // thread at a time, and no two of them in turns; a buffer's address holds while no other source
    // is read. They may outlive the opener. Throws Failure, as do the source's functions where the
    // file was changed meanwhile.
    std::unique_ptr<PointSource> open(const std::string& fileName,
                                      const OpenProgress& progress = {});

private:
    class OpenFiles;
    class ClosingSource;

    std::string m_format;
    std::vector<std::string> m_columnNames;
    std::shared_ptr<OpenFiles> m_files;
};

}  // namespace tarvo::exchange
