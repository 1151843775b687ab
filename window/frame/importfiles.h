// The files of an import: opened and looked at once, then read as often as the user tries to bring
// their points in, behind the map that was chosen.
#pragma once

#include "exchange/import/filesurvey.h"
#include "exchange/table/columnmap.h"
#include "window/common/aside.h"
#include "window/dialogs/dialogimportpoints.h"

#include <QStringList>
#include <memory>
#include <vector>

namespace tarvo::window {

class ImportFiles {
public:
    // The primary attribute of an import.
    static constexpr const char* primary = "tarvo.xyz";

    // Opens the files and reads all of their points. Throws core::Failure and what progress throws.
    void read(const QStringList& fileNames, const StepProgress& progress);
    // Fills in all but the names of the files. The plan refers to this object. Throws core::Failure
    // where no map could make points of a file.
    void describe(ImportFindings& findings) const;

    struct Mapped {
        exchange::PointSources sources;
        std::vector<exchange::FileSurvey> surveys;  // of the columns of each source
    };
    // Throws core::Failure.
    Mapped mapped(const exchange::ColumnMap& map) const;

private:
    void describeOrigin(ImportFindings& findings) const;

    std::vector<std::shared_ptr<exchange::PointSource>> m_files;
    std::vector<exchange::FileSurvey> m_surveys;  // one per file
};

}  // namespace tarvo::window
